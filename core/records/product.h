#pragma once

#include "money/taxcomponent.h"
#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_PRODUCT_FIELDS(X, C) \
    X(C, Text, sku, setSku, "") \
    X(C, Text, barcode, setBarcode, "") \
    X(C, Text, name, setName, "") \
    X(C, Number, costPrice, setCostPrice, 0) \
    X(C, Number, sellingPrice, setSellingPrice, 0) \
    X(C, Number, taxRate, setTaxRate, 0) \
    X(C, Flag, isTaxable, setIsTaxable, true) \
    X(C, ToOne, taxGroup, setTaxGroup, TaxGroup) \
    X(C, Number, stockQuantity, setStockQuantity, 0) \
    X(C, Number, reorderLevel, setReorderLevel, 5) \
    X(C, Text, supplier, setSupplier, "") \
    X(C, Flag, isActive, setIsActive, true) \
    X(C, Text, productTypeRaw, setProductTypeRaw, "inventory") \
    X(C, Text, sellingUnitRaw, setSellingUnitRaw, "each") \
    X(C, Flag, askForStaff, setAskForStaff, false) \
    X(C, OptNumber, commissionRate, setCommissionRate, ) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, Date, updatedAt, setUpdatedAt, ) \
    X(C, ToOne, category, setCategory, Category) \
    X(C, ToMany, saleItems, _, SaleItem, product, Nullify) \
    X(C, ToMany, movements, _, InventoryMovement, product, Nullify) \
    X(C, ToMany, purchaseOrderLines, _, PurchaseOrderLine, product, Nullify)
// clang-format on

class Product final : public Record {
    TALLY_RECORD(Product, TALLY_PRODUCT_FIELDS)

public:
    ProductType productType() const { return ProductTypes::fromRaw(productTypeRaw()); }
    void setProductType(ProductType type) { setProductTypeRaw(ProductTypes::raw(type)); }
    SellingUnit sellingUnit() const { return SellingUnits::fromRaw(sellingUnitRaw()); }
    void setSellingUnit(SellingUnit unit) { setSellingUnitRaw(SellingUnits::raw(unit)); }
    // An unknown type counts stock, like inventory.
    bool tracksStock() const { return productType() == ProductType::inventory; }
    bool isLowStock() const { return tracksStock() && stockQuantity() <= reorderLevel(); }
    double stockValue() const { return tracksStock() ? costPrice() * stockQuantity() : 0; }
    double marginPerUnit() const { return sellingPrice() - costPrice(); }
    std::vector<TaxComponent> taxComponents() const;
};
