#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_INVENTORY_MOVEMENT_FIELDS(X, C) \
    X(C, ToOne, product, setProduct, Product) \
    X(C, Text, typeRaw, setTypeRaw, "adjustment") \
    X(C, Number, quantityChange, setQuantityChange, 0) \
    X(C, Number, stockAfter, setStockAfter, 0) \
    X(C, Text, reason, setReason, "") \
    X(C, Text, supplier, setSupplier, "") \
    X(C, ToOne, relatedSale, setRelatedSale, Sale) \
    X(C, ToOne, performedBy, setPerformedBy, User) \
    X(C, Date, timestamp, setTimestamp, ) \
    X(C, OptNumber, unitCost, setUnitCost, ) \
    X(C, OptNumber, costBefore, setCostBefore, ) \
    X(C, OptNumber, costAfter, setCostAfter, ) \
    X(C, Text, purchaseOrderNumber, setPurchaseOrderNumber, "")
// clang-format on

class InventoryMovement final : public Record {
    TALLY_RECORD(InventoryMovement, TALLY_INVENTORY_MOVEMENT_FIELDS)
};
