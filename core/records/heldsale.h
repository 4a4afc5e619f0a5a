#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_HELD_SALE_FIELDS(X, C) \
    X(C, Date, heldAt, setHeldAt, ) \
    X(C, ToOne, cashier, setCashier, User) \
    X(C, ToOne, customer, setCustomer, Customer) \
    X(C, Text, note, setNote, "") \
    X(C, Text, statusRaw, setStatusRaw, "active") \
    X(C, Text, label, setLabel, "") \
    X(C, Number, saleDiscount, setSaleDiscount, 0) \
    X(C, Number, discountApprovedUpTo, setDiscountApprovedUpTo, 0) \
    X(C, Text, discountApprovedBy, setDiscountApprovedBy, "") \
    X(C, Text, discountReason, setDiscountReason, "") \
    X(C, OptUuid, appointmentID, setAppointmentID, ) \
    X(C, ToMany, items, _, HeldSaleItem, heldSale, Cascade)
// clang-format on

class HeldSale final : public Record {
    TALLY_RECORD(HeldSale, TALLY_HELD_SALE_FIELDS)

public:
    // What the list shows: the lines at their held prices less their discounts, not rounded.
    double subtotal() const;
};
