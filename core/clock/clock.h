#pragma once

#include <QDateTime>

#include <functional>

// The one source of "now". Tests fix it with Clock::Override so dates and day boundaries are
// reproducible; everything else just calls Clock::now().
class Clock {
public:
    static QDateTime now();
    static double nowSeconds(); // seconds since the Unix epoch, as stored

    // Call first thing in main. Unless TZ is set, the C library looks at the zone file again for
    // every local date and time made, which dominates reading a long ledger; with TZ naming the
    // system's zone file it is read once. A zone changed while the program runs counts from the
    // next start.
    static void readLocalZoneOnce();

    class Override {
    public:
        explicit Override(std::function<QDateTime()> source);
        explicit Override(const QDateTime& fixed);
        Override(const Override&) = delete;
        Override& operator=(const Override&) = delete;
        ~Override();

    private:
        std::function<QDateTime()> m_previous;
    };
};
