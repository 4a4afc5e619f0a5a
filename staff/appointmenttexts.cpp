#include "staff/appointmenttexts.h"

#include <QLocale>

namespace {
const QLocale& english()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}
} // namespace

QString AppointmentTexts::time(const QDateTime& moment)
{
    return english().toString(moment.toLocalTime().time(), QStringLiteral("h:mm AP"));
}

QString AppointmentTexts::timeRange(const Appointment& appointment)
{
    return time(appointment.start()) + QStringLiteral("–") + time(appointment.end());
}

QString AppointmentTexts::day(const QDate& date)
{
    return english().toString(date, QStringLiteral("ddd, MMM d"));
}

QString AppointmentTexts::length(qint64 minutes)
{
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    if (hours == 0)
        return QStringLiteral("%1 min").arg(rest);
    if (rest == 0)
        return QStringLiteral("%1 hr").arg(hours);
    return QStringLiteral("%1 hr %2 min").arg(hours).arg(rest);
}
