#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_SUPPLIER_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Text, phone, setPhone, "") \
    X(C, Text, email, setEmail, "") \
    X(C, Text, address, setAddress, "") \
    X(C, Text, notes, setNotes, "") \
    X(C, Flag, isActive, setIsActive, true) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, ToMany, purchaseOrders, _, PurchaseOrder, supplier, Nullify)
// clang-format on

class Supplier final : public Record {
    TALLY_RECORD(Supplier, TALLY_SUPPLIER_FIELDS)
};
