#include "environment/storemaintenance.h"

#include "records/records.h"
#include "store/storeerror.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {

struct StoreMaintenanceTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();

    Ref<AppSettings> settings() { return store.saved(std::make_shared<AppSettings>()); }
    int m_sales = 0;
    Ref<Product> product(const char* typeRaw)
    {
        auto made = std::make_shared<Product>();
        made->setProductTypeRaw(QString::fromUtf8(typeRaw));
        return store.saved(made);
    }
    // An old sale with one line, written before lines knew their tax mode.
    Ref<SaleItem> oldSale(double subtotal, double discount, double tax, double total, bool refund = false)
    {
        const Ref<Sale> sale = Sale::make(QStringLiteral("INV-%1").arg(++m_sales), nullptr, nullptr, nullptr);
        sale->setSubtotal(subtotal);
        sale->setSaleDiscount(discount);
        sale->setTaxTotal(tax);
        sale->setTotal(total);
        if (refund)
            sale->setRefundOfSaleID(QUuid::createUuid());
        auto item = std::make_shared<SaleItem>();
        item->setSale(sale);
        context.insert(sale);
        return store.saved(item);
    }
};

} // namespace

TEST_F(StoreMaintenanceTest, TaxModeIsReadOffEachSalesOwnFigures)
{
    const struct {
        const char* name;
        Ref<SaleItem> item;
        bool inclusive;
    } cases[] = {
        {"tax inside the total", oldSale(115, 0, 15, 115), true},
        {"tax on top", oldSale(100, 0, 15, 115), false},
        {"within 0.011 of the net", oldSale(115, 0, 15, 115.01), true},
        {"net after the discounts", oldSale(120, 5, 15, 115), true},
        {"no tax to place", oldSale(115, 0, 0, 115), false},
        {"a refund keeps its mode", oldSale(-115, 0, -15, -115, true), false},
    };
    settings();
    StoreMaintenance::run(context);
    store.reopen();
    for (const auto& c : cases)
        EXPECT_EQ(store.context().find<SaleItem>(c.item->id())->pricesIncludeTax(), c.inclusive) << c.name;
}

TEST_F(StoreMaintenanceTest, EachRepairRunsOnceAndItsMarkerStopsTheNext)
{
    const Ref<Product> service = product("service");
    const Ref<Product> misspelt = product("Service");
    auto kofi = std::make_shared<Customer>();
    kofi->setLoyaltyPoints(50);
    store.saved(kofi);
    settings();

    StoreMaintenance::run(context);
    EXPECT_TRUE(service->askForStaff());
    EXPECT_FALSE(misspelt->askForStaff());
    EXPECT_GT(context.count<Tax>(), 0);

    // What comes after the markers are set is left to its own screens.
    const Ref<Product> later = product("service");
    const Ref<SaleItem> inclusiveLater = oldSale(115, 0, 15, 115);
    kofi->setLoyaltyPoints(80);
    context.save();
    StoreMaintenance::run(context);
    store.reopen();
    ModelContext& reopened = store.context();
    const Ref<AppSettings> markers = reopened.fetchFirst<AppSettings>();
    EXPECT_TRUE(markers->saleItemTaxModeBackfilled());
    EXPECT_TRUE(markers->loyaltyOpeningBalancesRecorded());
    EXPECT_TRUE(markers->staffDefaultsApplied());
    EXPECT_FALSE(reopened.find<Product>(later->id())->askForStaff());
    EXPECT_FALSE(reopened.find<SaleItem>(inclusiveLater->id())->pricesIncludeTax());
    EXPECT_EQ(reopened.count<LoyaltyEntry>(), 1);
}

TEST_F(StoreMaintenanceTest, NothingOnANewStoreAndAFailureIsReportedNotThrown)
{
    EXPECT_EQ(StoreMaintenance::run(context), std::nullopt);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Tax")), 0);

    const Ref<AppSettings> marked = settings();
    const Ref<Product> service = product("service");
    context.connection().execute(QStringLiteral("CREATE TRIGGER failSettings BEFORE UPDATE ON AppSettings "
                                                "BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
    const std::optional<QString> problem = StoreMaintenance::run(context);
    ASSERT_TRUE(problem.has_value());
    EXPECT_TRUE(problem->contains(StoreError::sentence(StoreError::Kind::other))) << problem->toStdString();
    // The repairs stay undone, on disk and in memory, for the next start to try again.
    EXPECT_FALSE(marked->staffDefaultsApplied());
    EXPECT_FALSE(service->askForStaff());
    EXPECT_FALSE(context.hasChanges());
    store.reopen();
    EXPECT_FALSE(store.context().fetchFirst<AppSettings>()->staffDefaultsApplied());
}
