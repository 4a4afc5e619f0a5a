#include "stock/inventoryerror.h"

#include "money/quantity.h"

InventoryError::InventoryError(Case errorCase, const QString& productName, double available, double requested)
    : Refusal(describe(errorCase, productName, available, requested))
    , m_case(errorCase)
    , m_productName(productName)
    , m_available(available)
    , m_requested(requested)
{
}

QString InventoryError::describe(Case errorCase, const QString& productName, double available,
                                 double requested)
{
    switch (errorCase) {
    case Case::insufficientStock:
        return QStringLiteral("Only %1 of %2 in stock (requested %3).")
            .arg(Quantity::format(available), productName, Quantity::format(requested));
    case Case::notStockTracked:
        return QStringLiteral("%1 isn't an Inventory Item, so its stock isn't counted. Change its type in "
                              "Products to track stock.")
            .arg(productName);
    case Case::invalidQuantity:
        return QStringLiteral("Quantity must be greater than zero.");
    case Case::invalidCost:
        return QStringLiteral("Enter what each unit of the delivery cost (0 or more).");
    }
    Q_UNREACHABLE();
}
