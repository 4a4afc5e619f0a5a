#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_HELD_SALE_ITEM_FIELDS(X, C) \
    X(C, ToOne, product, setProduct, Product) \
    X(C, Number, quantity, setQuantity, 0) \
    X(C, Number, unitPriceSnapshot, setUnitPriceSnapshot, 0) \
    X(C, Number, lineDiscount, setLineDiscount, 0) \
    X(C, ToOne, heldSale, setHeldSale, HeldSale) \
    X(C, OptNumber, priceOverride, setPriceOverride, ) \
    X(C, Text, priceApprovedBy, setPriceApprovedBy, "") \
    X(C, Text, priceReason, setPriceReason, "") \
    X(C, OptUuid, staffID, setStaffID, ) \
    X(C, Text, staffName, setStaffName, "") \
    X(C, Number, staffCommissionRate, setStaffCommissionRate, 0)
// clang-format on

class HeldSaleItem final : public Record {
    TALLY_RECORD(HeldSaleItem, TALLY_HELD_SALE_ITEM_FIELDS)
};
