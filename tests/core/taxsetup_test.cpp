#include "money/taxsetup.h"
#include "records/records.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {
Ref<Product> addProduct(ModelContext& context, const QString& name, double rate)
{
    auto product = std::make_shared<Product>();
    product->setName(name);
    product->setTaxRate(rate);
    context.insert(product);
    return product;
}

QStringList groupNames(ModelContext& context)
{
    QStringList names;
    for (const auto& group : TaxSetup::groups(context))
        names << group->name();
    return names;
}
} // namespace

TEST(TaxSetupEnsure, NewStoreGetsTheStandardTaxesOnceAndAFifteenPercentDefault)
{
    TestStore store;
    auto& context = store.context();
    const auto settings = store.saved(std::make_shared<AppSettings>());
    TaxSetup::ensure(context, settings);

    EXPECT_EQ(groupNames(context),
              (QStringList{QStringLiteral("Standard (VAT + NHIL + GETFund)"), QStringLiteral("Tax 15%")}));
    auto standard = TaxSetup::groups(context).first();
    QStringList labels;
    for (const auto& component : standard->components())
        labels << component.label;
    EXPECT_EQ(labels, (QStringList{QStringLiteral("NHIL (2.5%)"), QStringLiteral("GETFund Levy (2.5%)"),
                                   QStringLiteral("VAT (15%)")}));

    // The old default rate of 0.15 is not the standard 0.20, so it gets a group of its own,
    // and that group, not the standard one, is the default.
    auto fallback = TaxSetup::defaultGroup(context, settings);
    ASSERT_TRUE(fallback);
    EXPECT_EQ(fallback->name(), QStringLiteral("Tax 15%"));
    EXPECT_EQ(fallback->taxes().size(), 1);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Tax")), 4);

    // A count that failed once counted as none, and the taxes were seeded a second time.
    for (const qint64 nth : {1, 2}) {
        SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
        EXPECT_THROW(TaxSetup::ensure(context, settings), StoreError) << nth;
        SqliteConnection::clearFault();
    }
    TaxSetup::ensure(context, settings);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Tax")), 4);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("TaxGroup")), 2);
    EXPECT_FALSE(context.hasChanges());
}

TEST(TaxSetupEnsure, OldStoreProductsGoToGroupsByRateOnce)
{
    TestStore store;
    auto& context = store.context();
    auto standardRate = addProduct(context, QStringLiteral("Soap"), 0.2);
    auto tenA = addProduct(context, QStringLiteral("Rice"), 0.1);
    auto tenB = addProduct(context, QStringLiteral("Beans"), 0.1000000001);
    auto exempt = addProduct(context, QStringLiteral("Water"), 0);
    context.save();

    auto settings = std::make_shared<AppSettings>();
    settings->setDefaultTaxRate(0);
    performUnitOfWork(context, [&] { context.insert(settings); });
    TaxSetup::ensure(context, settings);

    EXPECT_EQ(standardRate->taxGroup()->name(), QStringLiteral("Standard (VAT + NHIL + GETFund)"));
    ASSERT_TRUE(tenA->taxGroup());
    EXPECT_EQ(tenA->taxGroup()->name(), QStringLiteral("Tax 10%"));
    EXPECT_EQ(tenB->taxGroup(), tenA->taxGroup()); // rates equal to six places share a group
    EXPECT_FALSE(exempt->isTaxable());
    EXPECT_FALSE(exempt->taxGroup());
    EXPECT_EQ(TaxSetup::defaultGroup(context, settings)->name(),
              QStringLiteral("Standard (VAT + NHIL + GETFund)"));

    // A second run does nothing, whatever has changed since.
    for (const auto& group : TaxSetup::groups(context))
        group->setName(QStringLiteral("Renamed"));
    auto later = addProduct(context, QStringLiteral("Later"), 0.3);
    context.save();
    TaxSetup::ensure(context, settings);
    EXPECT_FALSE(later->taxGroup());
    EXPECT_EQ(context.count<TaxGroup>(), 2);
}

TEST(TaxSetupSync, RatesFollowGroupsMovesAndDeletedTaxes)
{
    TestStore store;
    auto& context = store.context();
    auto settings = std::make_shared<AppSettings>();
    settings->setDefaultTaxRate(0);
    store.saved(settings);
    auto product = store.saved(std::make_shared<Product>());
    TaxSetup::applyDefault(product, context, settings);
    EXPECT_TRUE(product->isTaxable());
    EXPECT_NEAR(product->taxRate(), 0.2, 1e-12);

    auto standard = product->taxGroup();
    auto vat = standard->sortedTaxes().last();
    EXPECT_EQ(vat->name(), QStringLiteral("VAT"));
    context.save();
    TaxSetup::remove(vat, context);
    EXPECT_NEAR(product->taxRate(), 0.05, 1e-12);
    EXPECT_EQ(standard->taxes().size(), 2);

    auto other = TaxGroup::make(QStringLiteral("Zero"), {}, 5);
    context.insert(other);
    context.save();
    EXPECT_EQ(TaxSetup::moveProducts(standard, other, context), 1);
    EXPECT_EQ(product->taxRate(), 0);
    EXPECT_EQ(product->taxGroup(), other);

    product->setIsTaxable(false);
    product->setTaxRate(0.3);
    TaxSetup::sync(*product);
    EXPECT_EQ(product->taxRate(), 0);
}
