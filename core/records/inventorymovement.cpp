#include "records/inventorymovement.h"

#include "money/currency.h"
#include "records/records.h"

TALLY_RECORD_IMPL(InventoryMovement, TALLY_INVENTORY_MOVEMENT_FIELDS)

std::optional<QString> InventoryMovement::costLine() const
{
    const auto money = [](double amount) { return Currency::format(amount, Currency::fixedSign); };
    const std::optional<double> delivered = unitCost();
    const std::optional<double> before = costBefore();
    const std::optional<double> after = costAfter();
    if (before && after) {
        const QString change = QStringLiteral("cost %1 → %2").arg(money(*before), money(*after));
        if (delivered)
            return QStringLiteral("Delivered at %1 · %2").arg(money(*delivered), change);
        return change;
    }
    if (delivered)
        return QStringLiteral("Delivered at %1").arg(money(*delivered));
    return std::nullopt;
}
