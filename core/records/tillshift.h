#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_TILL_SHIFT_FIELDS(X, C) \
    X(C, ToOne, cashier, setCashier, User) \
    X(C, Date, openedAt, setOpenedAt, ) \
    X(C, OptDate, closedAt, setClosedAt, ) \
    X(C, Number, openingFloat, setOpeningFloat, 0) \
    X(C, OptNumber, expectedCash, setExpectedCash, ) \
    X(C, OptNumber, countedCash, setCountedCash, ) \
    X(C, OptNumber, variance, setVariance, ) \
    X(C, Text, notes, setNotes, "") \
    X(C, Text, statusRaw, setStatusRaw, "open") \
    X(C, ToOne, closedBy, setClosedBy, User) \
    X(C, ToMany, cashMovements, _, CashMovement, tillShift, Cascade) \
    X(C, ToMany, sales, _, Sale, tillShift, Nullify)
// clang-format on

class TillShift final : public Record {
    TALLY_RECORD(TillShift, TALLY_TILL_SHIFT_FIELDS)
};
