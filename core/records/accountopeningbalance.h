#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// What a customer already owed when the shop started keeping the account here, carried over from
// its credit book. A charge on the account and nothing else: not a sale, so no takings, till or
// journal ever reads it. One at most per customer.
// clang-format off
#define TALLY_ACCOUNT_OPENING_BALANCE_FIELDS(X, C) \
    X(C, ToOne, customer, setCustomer, Customer) \
    X(C, Number, amount, setAmount, 0) \
    X(C, Date, owedSince, setOwedSince, ) \
    X(C, Text, note, setNote, "") \
    X(C, ToOne, enteredBy, setEnteredBy, User) \
    X(C, Date, timestamp, setTimestamp, )
// clang-format on

class AccountOpeningBalance final : public Record {
    TALLY_RECORD(AccountOpeningBalance, TALLY_ACCOUNT_OPENING_BALANCE_FIELDS)
};
