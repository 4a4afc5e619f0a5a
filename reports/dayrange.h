#pragma once

#include <QDate>
#include <QDateTime>

// Whole calendar days in the local time zone, from the first instant of `first` up to, not
// including, the first instant of the day after `last`. Every day boundary of the reports comes
// from here.
class DayRange {
public:
    explicit DayRange(QDate day)
        : DayRange(day, day)
    {
    }
    DayRange(QDate first, QDate last)
        : m_start(first.startOfDay().toMSecsSinceEpoch())
        , m_end(last.addDays(1).startOfDay().toMSecsSinceEpoch())
    {
    }

    bool contains(const QDateTime& moment) const
    {
        const qint64 at = moment.toMSecsSinceEpoch();
        return at >= m_start && at < m_end;
    }
    // As stored: seconds since the Unix epoch.
    double startSeconds() const { return double(m_start) / 1000.0; }
    double endSeconds() const { return double(m_end) / 1000.0; }

private:
    qint64 m_start;
    qint64 m_end; // excluded
};
