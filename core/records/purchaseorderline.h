#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_PURCHASE_ORDER_LINE_FIELDS(X, C) \
    X(C, ToOne, order, setOrder, PurchaseOrder) \
    X(C, ToOne, product, setProduct, Product) \
    X(C, Text, productName, setProductName, "") \
    X(C, Text, sku, setSku, "") \
    X(C, Text, sellingUnitRaw, setSellingUnitRaw, "each") \
    X(C, Number, quantityOrdered, setQuantityOrdered, 0) \
    X(C, Number, quantityReceived, setQuantityReceived, 0) \
    X(C, Number, unitCost, setUnitCost, 0) \
    X(C, Number, receivedValue, setReceivedValue, 0) \
    X(C, Integer, sortIndex, setSortIndex, 0)
// clang-format on

class PurchaseOrderLine final : public Record {
    TALLY_RECORD(PurchaseOrderLine, TALLY_PURCHASE_ORDER_LINE_FIELDS)
};
