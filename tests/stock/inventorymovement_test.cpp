#include "records/inventorymovement.h"

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(InventoryMovement, CostLineTellsWhatADeliveryDidToTheCost)
{
    const struct {
        const char* name;
        std::optional<double> unitCost, before, after;
        std::optional<QString> expected;
    } cases[] = {
        {"costed delivery", 3, 2, 2.3333, QStringLiteral("Delivered at ₵3.00 · cost ₵2.00 → ₵2.33")},
        {"cost change alone", std::nullopt, 1234.5, 1300, QStringLiteral("cost ₵1,234.50 → ₵1,300.00")},
        {"unit cost alone", 0.5, std::nullopt, std::nullopt, QStringLiteral("Delivered at ₵0.50")},
        {"half a change", 3, 2, std::nullopt, QStringLiteral("Delivered at ₵3.00")},
        {"no cost", std::nullopt, std::nullopt, std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        InventoryMovement movement;
        movement.setUnitCost(c.unitCost);
        movement.setCostBefore(c.before);
        movement.setCostAfter(c.after);
        EXPECT_EQ(movement.costLine(), c.expected) << c.name;
    }
}

TEST(InventoryMovement, TypesKeepTheirStoredTexts)
{
    // Stored in every store and backup: a change here breaks existing files.
    const char* raws[] = {"stockIn",       "stockOut",         "adjustment",  "saleDeduction",
                          "returnRestock", "supplierDelivery", "voidRestock", "costChange"};
    ASSERT_EQ(std::size(raws), InventoryMovementTypes::all.size());
    for (size_t i = 0; i < std::size(raws); ++i) {
        EXPECT_EQ(InventoryMovementTypes::raw(InventoryMovementTypes::all[i]), QString::fromUtf8(raws[i]));
        EXPECT_EQ(InventoryMovementTypes::fromRaw(QString::fromUtf8(raws[i])),
                  InventoryMovementTypes::all[i]);
    }
    EXPECT_EQ(InventoryMovementTypes::fromRaw(QStringLiteral("StockIn")), InventoryMovementType::adjustment);
    EXPECT_EQ(InventoryMovementTypes::label(InventoryMovementType::saleDeduction), QStringLiteral("Sale"));
}
