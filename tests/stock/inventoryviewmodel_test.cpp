#include "stock/inventoryviewmodel.h"

#include "stockbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

TEST(InventoryViewModel, MovementsComeNewestFirstOnePageAtATime)
{
    TestStore store;
    const Ref<Product> soap = addProduct(store.context());
    const Ref<Product> oil = addProduct(store.context(), {.name = QStringLiteral("Oil")});
    const int minutes = 61;
    // Out of time order, two rows per instant, another product's rows in between.
    for (int i = 0; i < minutes; ++i) {
        const int minute = (i * 37) % minutes;
        for (const int k : {0, 1}) {
            for (const Ref<Product>& product : {soap, oil}) {
                auto movement = std::make_shared<InventoryMovement>();
                movement->setProduct(product);
                movement->setQuantityChange(minute * 2 + k);
                movement->setTimestamp(Record::dateFromSeconds(1'700'000'000 + minute * 60.0));
                store.context().insert(movement);
            }
        }
    }
    store.context().save();

    InventoryViewModel model(store.context());
    QList<double> seen;
    for (int offset = 0;; offset += InventoryViewModel::movementPageSize) {
        const QList<Ref<InventoryMovement>> page = model.movements(soap, offset);
        for (const Ref<InventoryMovement>& movement : page) {
            EXPECT_EQ(movement->product(), soap);
            seen.append(movement->quantityChange());
        }
        if (page.size() < InventoryViewModel::movementPageSize)
            break;
    }
    // Of two rows of one instant, the one written last shows first.
    ASSERT_EQ(seen.size(), minutes * 2);
    for (int i = 0; i < seen.size(); ++i)
        EXPECT_EQ(seen[i], minutes * 2 - 1 - i);
}

TEST(InventoryViewModel, SummaryCountsOnlyProductsThatTrackStock)
{
    TestStore store;
    addProduct(store.context(), {.stock = 10, .cost = 2.5}); // above the reorder level of 5
    addProduct(store.context(), {.stock = 5, .cost = 1});    // at it: low
    addProduct(store.context(), {.stock = -2, .cost = 3});   // sold short: low, and lowers the value
    addProduct(store.context(), {.stock = 1, .cost = 100, .type = "service"});
    addProduct(store.context(), {.stock = 1, .cost = 100, .type = "nonInventory"});
    addProduct(store.context(), {.stock = 20, .cost = 1, .type = "legacy"}); // unknown counts stock

    InventoryViewModel model(store.context());
    EXPECT_EQ(model.stockValueText(QStringLiteral("GH₵")), QStringLiteral("GH₵44.00"));
    EXPECT_EQ(model.lowStockCount(), 2);
}
