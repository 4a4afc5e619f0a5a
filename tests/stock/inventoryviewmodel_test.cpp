#include "stock/inventoryviewmodel.h"

#include "stockbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
// Every page of a product's history, following the keys as the list does.
QList<Ref<InventoryMovement>> allPages(InventoryViewModel& model, const Ref<Product>& product)
{
    QList<Ref<InventoryMovement>> seen;
    for (int pages = 0; pages < 1000; ++pages) {
        const QList<Ref<InventoryMovement>> page =
            model.movements(product, seen.isEmpty() ? nullptr : seen.last());
        seen.append(page);
        if (page.size() < InventoryViewModel::movementPageSize)
            return seen;
    }
    ADD_FAILURE() << "the pages never end";
    return seen;
}

QList<double> changes(const QList<Ref<InventoryMovement>>& movements)
{
    QList<double> result;
    for (const Ref<InventoryMovement>& movement : movements)
        result.append(movement->quantityChange());
    return result;
}

void addMovement(ModelContext& context, const Ref<Product>& product, double change, double seconds)
{
    auto movement = std::make_shared<InventoryMovement>();
    movement->setProduct(product);
    movement->setQuantityChange(change);
    movement->setTimestamp(Record::dateFromSeconds(seconds));
    context.insert(movement);
}

// As another writer (an import, an older version) may store it: a time with more digits than
// QDateTime's milliseconds keep.
void addMovementBySql(ModelContext& context, const Ref<Product>& product, double change, double seconds)
{
    SqliteStatement insert = context.connection().prepare(
        QStringLiteral("INSERT INTO \"InventoryMovement\" (\"id\", \"product\", \"quantityChange\", "
                       "\"timestamp\") VALUES (?, ?, ?, ?)"));
    insert.bindAll({Record::uuidText(QUuid::createUuid()), product->idText(), change, seconds});
    insert.execute();
}
} // namespace

TEST(InventoryViewModel, PagesComeNewestFirstAndNeitherSkipNorRepeatTheRowsOfOneInstant)
{
    const int page = InventoryViewModel::movementPageSize;
    struct Layout {
        const char* name;
        int before, together, after; // rows older than, at and newer than the shared instant
        double instant;
        bool bySql;
    };
    const Layout layouts[] = {
        {"a whole history in one instant", 0, 2 * page + 7, 0, 1'700'000'000.0, false},
        {"a run straddling two page ends", page - 3, page + 6, page - 10, 1'700'000'000.0, false},
        {"finer than milliseconds", page - 3, page + 6, 5, 1'700'000'000.0004567, true},
    };
    for (const Layout& layout : layouts) {
        SCOPED_TRACE(layout.name);
        TestStore store;
        const Ref<Product> soap = addProduct(store.context());
        const Ref<Product> oil = addProduct(store.context(), {.name = QStringLiteral("Oil")});
        // Each soap row is numbered as written and followed by a row of another product.
        struct Row {
            double seconds;
            int written;
        };
        QList<Row> rows;
        const auto add = [&](double seconds) {
            const int written = int(rows.size());
            rows.append({seconds, written});
            (layout.bySql ? addMovementBySql : addMovement)(store.context(), soap, written, seconds);
            addMovement(store.context(), oil, -1, seconds);
        };
        // Out of time order: the newest first.
        for (int i = 0; i < layout.after; ++i)
            add(layout.instant + 1 + i);
        for (int i = 0; i < layout.before; ++i)
            add(layout.instant - 1000 + i);
        for (int i = 0; i < layout.together; ++i)
            add(layout.instant);
        store.context().save();

        // Newest time first and, within an instant, the last written first.
        std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
            return a.seconds != b.seconds ? a.seconds > b.seconds : a.written > b.written;
        });
        QList<double> expected;
        for (const Row& row : rows)
            expected.append(row.written);
        InventoryViewModel model(store.context());
        EXPECT_EQ(changes(allPages(model, soap)), expected);
    }
}

TEST(InventoryViewModel, AMovementBookedWhileScrollingRepeatsNoRowOfTheNextPage)
{
    TestStore store;
    const Ref<Product> soap = addProduct(store.context());
    const int rows = InventoryViewModel::movementPageSize + 20;
    for (int i = 0; i < rows; ++i)
        addMovement(store.context(), soap, i, 1'700'000'000.0 + i * 60);
    store.context().save();

    InventoryViewModel model(store.context());
    const QList<Ref<InventoryMovement>> first = model.movements(soap);
    // A sale at the till puts a newer row on top before the list asks for more.
    addMovement(store.context(), soap, -1, 1'800'000'000.0);
    store.context().save();
    const QList<Ref<InventoryMovement>> second = model.movements(soap, first.last());

    ASSERT_EQ(second.size(), 20);
    EXPECT_EQ(second.first()->quantityChange(), first.last()->quantityChange() - 1);
    EXPECT_EQ(second.last()->quantityChange(), 0);
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
