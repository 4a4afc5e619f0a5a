#pragma once

#include "records/enums.h"

#include <QString>

// One tender as the payment sheet hands it to checkout.
struct PaymentInput {
    PaymentMethodType method = PaymentMethodType::cash;
    // The part of the sale this tender settles; for cash the amount kept, not what was handed over.
    double amount = 0;
    // What the customer handed over; read for cash only.
    double tenderedAmount = 0;
    QString reference;

    friend bool operator==(const PaymentInput&, const PaymentInput&) = default;
};
