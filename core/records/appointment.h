#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_APPOINTMENT_FIELDS(X, C) \
    X(C, Date, start, setStart, ) \
    X(C, Integer, durationMinutes, setDurationMinutes, 0) \
    X(C, OptUuid, customerID, setCustomerID, ) \
    X(C, Text, customerName, setCustomerName, "") \
    X(C, Text, customerPhone, setCustomerPhone, "") \
    X(C, OptUuid, serviceID, setServiceID, ) \
    X(C, Text, serviceName, setServiceName, "") \
    X(C, OptUuid, staffID, setStaffID, ) \
    X(C, Text, staffName, setStaffName, "") \
    X(C, Text, notes, setNotes, "") \
    X(C, Text, statusRaw, setStatusRaw, "booked") \
    X(C, Text, saleInvoiceNumber, setSaleInvoiceNumber, "") \
    X(C, Date, createdAt, setCreatedAt, )
// clang-format on

class Appointment final : public Record {
    TALLY_RECORD(Appointment, TALLY_APPOINTMENT_FIELDS)

public:
    AppointmentStatus status() const { return AppointmentStatuses::fromRaw(statusRaw()); }
    void setStatus(AppointmentStatus status) { setStatusRaw(AppointmentStatuses::raw(status)); }
    bool isBooked() const { return status() == AppointmentStatus::booked; }
    QDateTime end() const { return start().addSecs(durationMinutes() * 60); }
};
