#include "stock/stockadjustmentmodel.h"

#include "stock/inventoryservice.h"
#include "stockbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
// The sheet over a real service and store, counting how often it asked to be closed.
struct Sheet {
    explicit Sheet(const NewProduct& fields)
        : product(addProduct(store.context(), fields))
    {
    }
    qint64 movementsOnDisk() const { return countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")); }

    TestStore store;
    InventoryService inventory{store.context()};
    SessionStore session;
    Ref<Product> product;
    int dismissed = 0;
    StockAdjustmentModel model{inventory, store.context(), session, product, [this] { ++dismissed; }};
};
} // namespace

TEST(StockAdjustmentModel, StockInReadsACommaAsDecimalPointAndSaves)
{
    Sheet sheet({.stock = 1, .cost = 2, .unit = "kg"});
    EXPECT_EQ(sheet.model.unitCostText(), QStringLiteral("2"));
    sheet.model.setQuantityText(QStringLiteral(" 2,5 "));
    sheet.model.setUnitCostText(QStringLiteral("₵3"));
    sheet.model.setSupplier(QStringLiteral("  Acme "));
    EXPECT_TRUE(sheet.model.apply());
    EXPECT_EQ(sheet.dismissed, 1);
    EXPECT_EQ(sheet.product->stockQuantity(), 3.5);
    EXPECT_EQ(sheet.product->costPrice(), 2.7143);
    ASSERT_EQ(sheet.movementsOnDisk(), 1);
    EXPECT_EQ(sheet.store.context().fetchFirst<InventoryMovement>()->supplier(), QStringLiteral("Acme"));
}

TEST(StockAdjustmentModel, QuantityMustSuitTheUnit)
{
    using Mode = StockAdjustmentModel::Mode;
    const struct {
        const char* unit;
        Mode mode;
        const char* typed;
        const char* error; // empty when accepted
    } cases[] = {
        {"each", Mode::stockIn, "1.5", "Enter a whole number."},
        {"kg", Mode::stockIn, "abc", "Enter an amount in kg, e.g. 2.5."},
        {"litre", Mode::stockOut, "0", "Enter an amount in L, e.g. 2.5."},
        {"each", Mode::adjust, "0.0", "Enter a whole number."}, // only the text "0" is a count of nothing
        {"each", Mode::adjust, " 0 ", ""},
        {"each", Mode::stockIn, "2.0004", ""}, // whole once in thousandths
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.unit) + " " + c.typed);
        Sheet sheet({.stock = 10, .unit = c.unit});
        sheet.model.setMode(c.mode);
        sheet.model.setQuantityText(QString::fromUtf8(c.typed));
        const QString error = QString::fromUtf8(c.error);
        EXPECT_EQ(sheet.model.apply(), error.isEmpty());
        EXPECT_EQ(sheet.model.errorMessage().value_or(QString()), error);
        EXPECT_EQ(sheet.movementsOnDisk(), error.isEmpty() ? 1 : 0);
    }
}

TEST(StockAdjustmentModel, ANegativeCostIsRefusedAndPreviewsNothing)
{
    Sheet sheet({.stock = 10, .cost = 2});
    sheet.model.setQuantityText(QStringLiteral("5"));
    sheet.model.setUnitCostText(QStringLiteral("-1"));
    EXPECT_EQ(sheet.model.costPreview(), std::nullopt);
    EXPECT_FALSE(sheet.model.apply());
    EXPECT_EQ(sheet.model.errorMessage(), QStringLiteral("Enter what each unit of the delivery cost (0 or more)."));
    EXPECT_EQ(sheet.movementsOnDisk(), 0);
}
