#pragma once

#include "records/product.h"
#include "records/sale.h"
#include "stock/inventoryerror.h"
#include "store/modelcontext.h"

#include <optional>

struct NewProduct {
    QString name = QStringLiteral("Soap");
    double stock = 0;
    double cost = 0;
    const char* unit = "each";
    const char* type = "inventory";
};

// Saved, so that a test can tell what an operation wrote from what was there before.
inline Ref<Product> addProduct(ModelContext& context, const NewProduct& fields = {})
{
    auto product = std::make_shared<Product>();
    product->setName(fields.name);
    product->setStockQuantity(fields.stock);
    product->setCostPrice(fields.cost);
    product->setSellingUnitRaw(QString::fromUtf8(fields.unit));
    product->setProductTypeRaw(QString::fromUtf8(fields.type));
    context.insert(product);
    context.save();
    return product;
}

inline Ref<Sale> addSale(ModelContext& context, const char* invoiceNumber)
{
    const Ref<Sale> sale = Sale::make(QString::fromUtf8(invoiceNumber), nullptr, nullptr, nullptr);
    context.insert(sale);
    context.save();
    return sale;
}

template <class Action> std::optional<InventoryError> inventoryFailureOf(Action action)
{
    try {
        action();
    } catch (const InventoryError& error) {
        return error;
    }
    return std::nullopt;
}
