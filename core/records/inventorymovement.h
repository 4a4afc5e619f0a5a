#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

#include <optional>

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

public:
    InventoryMovementType type() const { return InventoryMovementTypes::fromRaw(typeRaw()); }
    void setType(InventoryMovementType type) { setTypeRaw(InventoryMovementTypes::raw(type)); }
    // "Delivered at ₵3.00 · cost ₵2.00 → ₵2.33" for a costed delivery; absent when no cost was
    // recorded. Always the fixed sign, like the other history texts.
    std::optional<QString> costLine() const;
};
