#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_CUSTOMER_PAYMENT_FIELDS(X, C) \
    X(C, ToOne, customer, setCustomer, Customer) \
    X(C, Number, amount, setAmount, 0) \
    X(C, Text, methodRaw, setMethodRaw, "cash") \
    X(C, Text, reference, setReference, "") \
    X(C, Text, note, setNote, "") \
    X(C, ToOne, receivedBy, setReceivedBy, User) \
    X(C, ToOne, tillShift, setTillShift, TillShift) \
    X(C, Date, timestamp, setTimestamp, )
// clang-format on

class CustomerPayment final : public Record {
    TALLY_RECORD(CustomerPayment, TALLY_CUSTOMER_PAYMENT_FIELDS)
};
