#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_PAYMENT_FIELDS(X, C) \
    X(C, ToOne, sale, setSale, Sale) \
    X(C, Text, methodRaw, setMethodRaw, "cash") \
    X(C, Number, amount, setAmount, 0) \
    X(C, Number, tenderedAmount, setTenderedAmount, 0) \
    X(C, Number, changeGiven, setChangeGiven, 0) \
    X(C, Text, reference, setReference, "") \
    X(C, Date, timestamp, setTimestamp, )
// clang-format on

class Payment final : public Record {
    TALLY_RECORD(Payment, TALLY_PAYMENT_FIELDS)

public:
    static Ref<Payment> make(PaymentMethodType method, double amount, double tenderedAmount,
                             double changeGiven, const QString& reference);

    PaymentMethodType method() const { return PaymentMethodTypes::fromRaw(methodRaw()); }
};
