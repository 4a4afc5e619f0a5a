#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_STAFF_MEMBER_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Text, phone, setPhone, "") \
    X(C, Number, commissionRate, setCommissionRate, 0) \
    X(C, Flag, isActive, setIsActive, true) \
    X(C, Text, notes, setNotes, "") \
    X(C, Date, createdAt, setCreatedAt, )
// clang-format on

class StaffMember final : public Record {
    TALLY_RECORD(StaffMember, TALLY_STAFF_MEMBER_FIELDS)
};
