#pragma once

#include "refusal/caseerror.h"

#include <QString>
#include <QStringList>

enum class StaffErrorCase {
    staffMissing,
    serviceMissing,
    appointmentNotBooked,
    appointmentNeedsService,
    invalidDuration
};

// Why the staff book refused; description() is the text shown as it is.
class StaffError : public CasedRefusal<StaffErrorCase> {
public:
    // The products of the lines still without a member, in line order.
    static StaffError staffMissing(const QStringList& productNames)
    {
        return {Case::staffMissing, QStringLiteral("Choose who did %1 — click Who? on the line.")
                                        .arg(productNames.join(QStringLiteral(", ")))};
    }
    static StaffError serviceMissing(const QString& name)
    {
        return {Case::serviceMissing,
                QStringLiteral("%1 is no longer in Products, so it can't be rung up. Add "
                               "the service to the sale by hand.")
                    .arg(name)};
    }
    // `status` is the status's title.
    static StaffError appointmentNotBooked(const QString& status)
    {
        return {Case::appointmentNotBooked,
                QStringLiteral("This appointment is %1, so it can't be rung up.").arg(status)};
    }
    static StaffError appointmentNeedsService()
    {
        return {Case::appointmentNeedsService, QStringLiteral("Choose the service being booked.")};
    }
    static StaffError invalidDuration()
    {
        return {Case::invalidDuration, QStringLiteral("An appointment lasts at least 5 minutes.")};
    }

private:
    using CasedRefusal::CasedRefusal;
};
