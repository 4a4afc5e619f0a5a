#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_CASH_MOVEMENT_FIELDS(X, C) \
    X(C, ToOne, tillShift, setTillShift, TillShift) \
    X(C, Text, typeRaw, setTypeRaw, "payIn") \
    X(C, Number, amount, setAmount, 0) \
    X(C, Text, reason, setReason, "") \
    X(C, ToOne, performedBy, setPerformedBy, User) \
    X(C, Date, timestamp, setTimestamp, )
// clang-format on

class CashMovement final : public Record {
    TALLY_RECORD(CashMovement, TALLY_CASH_MOVEMENT_FIELDS)
};
