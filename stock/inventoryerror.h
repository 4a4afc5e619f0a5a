#pragma once

#include "refusal/refusal.h"

#include <QString>


// Why a stock change was refused; description() is the text shown as it is.
class InventoryError : public Refusal {
public:
    enum class Case { insufficientStock, notStockTracked, invalidQuantity, invalidCost };

    static InventoryError insufficientStock(const QString& productName, double available, double requested)
    {
        return InventoryError(Case::insufficientStock, productName, available, requested);
    }
    static InventoryError notStockTracked(const QString& productName)
    {
        return InventoryError(Case::notStockTracked, productName);
    }
    static InventoryError invalidQuantity() { return InventoryError(Case::invalidQuantity); }
    static InventoryError invalidCost() { return InventoryError(Case::invalidCost); }

    Case errorCase() const { return m_case; }
    // Empty for the cases that name no product.
    QString productName() const { return m_productName; }
    // Both 0 except for insufficientStock.
    double available() const { return m_available; }
    double requested() const { return m_requested; }

private:
    InventoryError(Case errorCase, const QString& productName = {}, double available = 0,
                   double requested = 0);

    static QString describe(Case errorCase, const QString& productName, double available, double requested);

    Case m_case;
    QString m_productName;
    double m_available;
    double m_requested;
};
