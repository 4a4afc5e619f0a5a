#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_CUSTOMER_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Text, phone, setPhone, "") \
    X(C, Text, email, setEmail, "") \
    X(C, Text, address, setAddress, "") \
    X(C, Integer, loyaltyPoints, setLoyaltyPoints, 0) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, Flag, allowCredit, setAllowCredit, false) \
    X(C, Number, creditLimit, setCreditLimit, 0) \
    X(C, ToMany, sales, _, Sale, customer, Nullify)
// clang-format on

class Customer final : public Record {
    TALLY_RECORD(Customer, TALLY_CUSTOMER_FIELDS)
};
