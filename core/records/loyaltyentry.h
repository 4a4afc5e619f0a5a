#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_LOYALTY_ENTRY_FIELDS(X, C) \
    X(C, ToOne, customer, setCustomer, Customer) \
    X(C, Integer, points, setPoints, 0) \
    X(C, Integer, balanceAfter, setBalanceAfter, 0) \
    X(C, Text, kindRaw, setKindRaw, "earned") \
    X(C, Text, reference, setReference, "") \
    X(C, Text, note, setNote, "") \
    X(C, Number, value, setValue, 0) \
    X(C, ToOne, user, setUser, User) \
    X(C, Date, timestamp, setTimestamp, )
// clang-format on

class LoyaltyEntry final : public Record {
    TALLY_RECORD(LoyaltyEntry, TALLY_LOYALTY_ENTRY_FIELDS)
};
