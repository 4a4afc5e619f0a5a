#pragma once

#include "money/lineamounts.h"
#include "money/taxbreakdown.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_SALE_ITEM_FIELDS(X, C) \
    X(C, ToOne, product, setProduct, Product) \
    X(C, Text, productNameSnapshot, setProductNameSnapshot, "") \
    X(C, Text, skuSnapshot, setSkuSnapshot, "") \
    X(C, Number, quantity, setQuantity, 0) \
    X(C, Number, unitPrice, setUnitPrice, 0) \
    X(C, Number, unitCostSnapshot, setUnitCostSnapshot, 0) \
    X(C, Number, taxRateSnapshot, setTaxRateSnapshot, 0) \
    X(C, Number, lineDiscount, setLineDiscount, 0) \
    X(C, Flag, pricesIncludeTax, setPricesIncludeTax, false) \
    X(C, Text, productTypeRaw, setProductTypeRaw, "inventory") \
    X(C, Text, sellingUnitRaw, setSellingUnitRaw, "each") \
    X(C, Text, taxComponentsRaw, setTaxComponentsRaw, "") \
    X(C, ToOne, sale, setSale, Sale) \
    X(C, Number, returnedQuantity, setReturnedQuantity, 0) \
    X(C, OptUuid, staffID, setStaffID, ) \
    X(C, Text, staffName, setStaffName, "") \
    X(C, Number, commissionRate, setCommissionRate, 0)
// clang-format on

class SaleItem final : public Record {
    TALLY_RECORD(SaleItem, TALLY_SALE_ITEM_FIELDS)

public:
    // A snapshot of the product as sold; with no product the snapshots keep their defaults.
    static Ref<SaleItem> make(const Ref<Product>& product, double quantity, double unitPrice,
                              double unitCostSnapshot, double taxRateSnapshot, double lineDiscount,
                              bool pricesIncludeTax);

    // None of these is rounded: whoever shows or adds them rounds.
    double grossAmount() const { return unitPrice() * quantity(); }
    double taxAmount() const;
    double lineTotal() const;
    double commission() const;
    std::vector<TaxAmount> taxBreakdown() const;

private:
    LineAmounts amounts() const;
};
