#include "stock/inventoryservice.h"

#include "clock/clock.h"
#include "stockbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
QList<Ref<InventoryMovement>> movementsOf(ModelContext& context, const Ref<Product>& product)
{
    return context.fetch<InventoryMovement>(FetchDescriptor(InventoryMovement::Col::product == product));
}
} // namespace

TEST(InventoryService, DeliveryMovesTheAverageCostOnlyWithStockOnHandAndACost)
{
    const struct {
        const char* name;
        double stock;
        std::optional<double> unitCost;
        double stockAfter, costAfter;
    } cases[] = {
        {"weighted over stock on hand", 10, 3, 15, 2.3333},
        {"units sold short play no part", -3, 3, 2, 3},
        {"no cost leaves the cost alone", 10, std::nullopt, 15, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestStore store;
        const QDateTime now(QDate(2024, 3, 1), QTime(9, 30), Qt::UTC);
        const Clock::Override clock(now);
        const Ref<Product> product = addProduct(store.context(), {.stock = c.stock, .cost = 2});
        const Ref<InventoryMovement> movement =
            InventoryService(store.context())
                .recordDelivery(product, 5, QString(), QString(), c.unitCost, nullptr);
        EXPECT_EQ(product->stockQuantity(), c.stockAfter);
        EXPECT_EQ(product->costPrice(), c.costAfter);
        EXPECT_EQ(product->updatedAt(), now);
        EXPECT_EQ(movement->stockAfter(), c.stockAfter);
        EXPECT_EQ(movement->unitCost(), c.unitCost);
        EXPECT_EQ(movement->costBefore(), c.unitCost ? std::optional(2.0) : std::nullopt);
        EXPECT_EQ(movement->costAfter(), c.unitCost ? std::optional(c.costAfter) : std::nullopt);
        EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), 0) << "the caller saves";
    }
}

TEST(InventoryService, StockOutMayGoNegativeAndAnUnchangedCountStillLeavesARow)
{
    TestStore store;
    const Ref<Product> product = addProduct(store.context(), {.stock = 4});
    InventoryService service(store.context());
    service.stockOut(product, 6, QStringLiteral("broken"), nullptr);
    EXPECT_EQ(product->stockQuantity(), -2);
    service.adjust(product, -2 + 2, QStringLiteral("count"), nullptr);
    service.adjust(product, 0, QStringLiteral("recount"), nullptr);

    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), 3) << "each saves itself";
    const QList<Ref<InventoryMovement>> rows = movementsOf(store.context(), product);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0]->stockAfter(), -2);
    EXPECT_EQ(rows[1]->quantityChange(), 2);
    EXPECT_EQ(rows[2]->type(), InventoryMovementType::adjustment);
}

TEST(InventoryService, SaleMayTakeExactlyTheStockButNotOneMore)
{
    TestStore store;
    const Ref<Product> product = addProduct(store.context(), {.stock = 5});
    const Ref<Sale> sale = addSale(store.context(), "INV-20240301-0001");
    InventoryService service(store.context());
    service.deductForSale(product, 5, sale, false, nullptr);
    EXPECT_EQ(product->stockQuantity(), 0);
    EXPECT_EQ(movementsOf(store.context(), product).value(0)->reason(), QStringLiteral("Sale INV-20240301-0001"));
    store.context().save();

    const auto refused = inventoryFailureOf([&] { service.deductForSale(product, 1, sale, false, nullptr); });
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->description(), QStringLiteral("Only 0 of Soap in stock (requested 1)."));
    EXPECT_FALSE(store.context().hasChanges());

    service.deductForSale(product, 1, sale, true, nullptr);
    EXPECT_EQ(product->stockQuantity(), -1);
}

TEST(InventoryService, UntrackedProductsArePassedOverOnceTheQuantityIsValid)
{
    TestStore store;
    const Ref<Product> product = addProduct(store.context(), {.stock = 3, .type = "service"});
    const Ref<Sale> sale = addSale(store.context(), "INV-1");
    InventoryService service(store.context());
    service.deductForSale(product, 10, sale, false, nullptr);
    EXPECT_FALSE(store.context().hasChanges());
    // The quantity is checked before the type, so a bad checkout line fails even on a service; a
    // delivery checks the type first.
    const auto badLine = inventoryFailureOf([&] { service.deductForSale(product, 0, sale, true, nullptr); });
    EXPECT_EQ(badLine.value().errorCase(), InventoryError::Case::invalidQuantity);
    const auto delivery =
        inventoryFailureOf([&] { service.recordDelivery(product, 0, {}, {}, -1.0, nullptr); });
    EXPECT_EQ(delivery.value().description(),
              QStringLiteral("Soap isn't an Inventory Item, so its stock isn't counted. "
                             "Change its type in Products to track stock."));
}
