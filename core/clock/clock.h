#pragma once

#include <QDateTime>

#include <functional>

// The one source of "now". Tests fix it with Clock::Override so dates and day boundaries are
// reproducible; everything else just calls Clock::now().
class Clock {
public:
    static QDateTime now();
    static double nowSeconds(); // seconds since the Unix epoch, as stored

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
