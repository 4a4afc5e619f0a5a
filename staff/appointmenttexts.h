#pragma once

#include "records/appointment.h"

#include <QDate>
#include <QDateTime>
#include <QString>

// How the book writes times and lengths, in en_US as the rest of the program.
struct AppointmentTexts {
    // "9:00 AM"
    static QString time(const QDateTime& moment);
    // "9:00 AM–9:30 AM"
    static QString timeRange(const Appointment& appointment);
    // "Tue, Mar 10"
    static QString day(const QDate& date);
    // "45 min", "1 hr", "1 hr 30 min"
    static QString length(qint64 minutes);
};
