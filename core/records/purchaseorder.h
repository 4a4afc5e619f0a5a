#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_PURCHASE_ORDER_FIELDS(X, C) \
    X(C, Text, number, setNumber, "") \
    X(C, ToOne, supplier, setSupplier, Supplier) \
    X(C, Text, supplierName, setSupplierName, "") \
    X(C, Text, statusRaw, setStatusRaw, "draft") \
    X(C, Text, notes, setNotes, "") \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, OptDate, expectedDate, setExpectedDate, ) \
    X(C, OptDate, sentAt, setSentAt, ) \
    X(C, OptDate, receivedAt, setReceivedAt, ) \
    X(C, OptDate, cancelledAt, setCancelledAt, ) \
    X(C, Flag, closedShort, setClosedShort, false) \
    X(C, ToOne, createdBy, setCreatedBy, User) \
    X(C, ToMany, lines, _, PurchaseOrderLine, order, Cascade)
// clang-format on

class PurchaseOrder final : public Record {
    TALLY_RECORD(PurchaseOrder, TALLY_PURCHASE_ORDER_FIELDS)
};
