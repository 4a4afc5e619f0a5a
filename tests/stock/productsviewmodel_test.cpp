#include "stock/productsviewmodel.h"

#include "clock/clock.h"
#include "money/taxsetup.h"
#include "stock/inventoryservice.h"
#include "stock/suppliersviewmodel.h"
#include "stockbuilders.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
class ProductsViewModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        session.setSettings(settings);
        session.setCurrentUser(boss);
    }

    Ref<Category> addCategory(const QString& name)
    {
        auto category = std::make_shared<Category>();
        category->setName(name);
        return store.saved(category);
    }

    QList<Ref<InventoryMovement>> costRows()
    {
        return store.context().fetch<InventoryMovement>(InventoryMovement::Col::typeRaw == "costChange");
    }

    static QStringList names(const QList<Ref<Product>>& products)
    {
        QStringList result;
        for (const Ref<Product>& product : products)
            result.append(product->name());
        return result;
    }
    static QStringList names(const QList<ProductListRow>& rows)
    {
        QStringList result;
        for (const ProductListRow& row : rows)
            result.append(row.name);
        return result;
    }

    TestStore store;
    SessionStore session;
    Ref<AppSettings> settings = store.saved(std::make_shared<AppSettings>());
    Ref<User> boss = store.saved(std::make_shared<User>());
    ProductsViewModel model{store.context(), session};
};
} // namespace

TEST_F(ProductsViewModelTest, FiltersCombineAndTheQueryAgreesWithTheRule)
{
    const Ref<Category> drinks = addCategory(QStringLiteral("Drinks"));
    struct Row {
        const char* name;
        const char* type;
        double stock;
        bool active;
        const char* sku;
        const char* barcode;
        bool inDrinks;
    };
    const Row rows[] = {
        {"Cola", "inventory", 2, true, "CL-1", "5000112", true},    // low, active
        {"Malt", "inventory", 2, false, "ML-1", "ABC900", true},    // low, inactive
        {"Water", "inventory", 50, false, "WT-1", "abc901", false}, // stocked, inactive
        {"Haircut", "service", 0, false, "SV-1", "", false},        // never low
        {"Bag", "nonInventory", 0, true, "bg-cola", "", false},     // not stocked
        {"Old stock", "legacyKind", 1, false, "", "", true},        // unknown type counts stock
    };
    QList<Ref<Product>> all;
    for (const Row& row : rows) {
        const Ref<Product> product = addProduct(
            store.context(), {.name = QString::fromUtf8(row.name), .stock = row.stock, .type = row.type});
        product->setIsActive(row.active);
        product->setSku(QString::fromUtf8(row.sku));
        product->setBarcode(QString::fromUtf8(row.barcode));
        product->setCategory(row.inDrinks ? drinks : nullptr);
        all.append(product);
    }
    store.context().save();
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a->name() < b->name(); });

    const struct {
        const char* what;
        std::function<void(ProductsViewModel&)> set;
        QStringList expected;
    } cases[] = {
        {"low stock and inactive",
         [](ProductsViewModel& m) { m.setShowOnlyLowStock(true), m.setShowOnlyInactive(true); },
         {"Malt", "Old stock"}},
        {"inventory takes unknown types",
         [](ProductsViewModel& m) { m.setTypeFilter(ProductType::inventory); },
         {"Cola", "Malt", "Old stock", "Water"}},
        {"services and inactive",
         [](ProductsViewModel& m) { m.setTypeFilter(ProductType::service), m.setShowOnlyInactive(true); },
         {"Haircut"}},
        {"category and search on SKU",
         [&](ProductsViewModel& m) { m.setSelectedCategoryID(drinks->id()), m.setSearchText("ml-"); },
         {"Malt"}},
        {"search in name or SKU, any case",
         [](ProductsViewModel& m) { m.setSearchText("COLA"); },
         {"Bag", "Cola"}},
        {"barcode as stored", [](ProductsViewModel& m) { m.setSearchText("ABC"); }, {"Water"}},
        {"barcode digits", [](ProductsViewModel& m) { m.setSearchText("0011"); }, {"Cola"}},
    };
    for (const auto& c : cases) {
        ProductsViewModel filters(store.context(), session);
        c.set(filters);
        EXPECT_EQ(names(filters.filtered(all)), c.expected) << c.what;
        EXPECT_EQ(names(filters.page()), c.expected) << c.what << " (query)";
    }
}

TEST_F(ProductsViewModelTest, ANewProductReachesTheStoreOnlyOnSave)
{
    settings->setLowStockDefaultThreshold(12);
    settings->setDefaultProductTypeRaw(QStringLiteral("service"));
    const Ref<Category> drinks = addCategory(QStringLiteral("Drinks"));
    QDateTime now = QDateTime::fromSecsSinceEpoch(1'750'000'000);
    Clock::Override clock([&now] { return now; });

    model.setSelectedCategoryID(drinks->id());
    model.setSearchText(QStringLiteral("zzz"));
    const Ref<Product> draft = model.newProduct(std::nullopt);
    ASSERT_NE(draft, nullptr);
    EXPECT_EQ(draft->productType(), ProductType::service);
    EXPECT_EQ(draft->category(), drinks);
    EXPECT_EQ(draft->reorderLevel(), 12);
    // The store's 15% is the standard group, seeded for the first product.
    EXPECT_EQ(draft->taxGroup(), TaxSetup::defaultGroup(store.context(), settings));
    EXPECT_DOUBLE_EQ(draft->taxRate(), 0.15);
    EXPECT_FALSE(model.hasUnsavedEdits()) << "nothing typed yet, nothing to lose";
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 0);

    draft->setName(QStringLiteral("Braiding"));
    EXPECT_TRUE(model.hasUnsavedEdits());
    now = now.addSecs(90);
    ASSERT_EQ(model.save(), std::nullopt);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 1);
    const Ref<Product> saved = model.selectedProduct();
    ASSERT_NE(saved, nullptr);
    EXPECT_NE(saved, model.editedProduct()) << "the form goes on editing a copy";
    EXPECT_EQ(saved->createdAt(), now) << "made when it reached the store";
    EXPECT_TRUE(costRows().isEmpty()) << "a first cost is no change";
    EXPECT_TRUE(model.searchText().isEmpty()) << "a filter that hides the saved product is cleared";
    EXPECT_EQ(model.selectedCategoryID(), drinks->id()) << "one that shows it stays";
}

TEST_F(ProductsViewModelTest, ACostTypedByHandIsBookedInTheSameSaveBeyondTheTolerance)
{
    const struct {
        const char* typed;
        double cost;
        bool booked;
    } cases[] = {{"2.00004", 2.0, false}, {"1.99996", 2.0, false}, {"2.0001", 2.0001, true},
                 {"2.33336", 2.3334, true}, {"₵1,002.5", 1002.5, true}};
    for (const auto& c : cases) {
        const Ref<Product> product = addProduct(store.context(), {.stock = 7, .cost = 2});
        const qint64 before = countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement"));
        model.select(product);
        model.enter(ProductsViewModel::Entry::costPrice, QString::fromUtf8(c.typed));
        ASSERT_EQ(model.save(), std::nullopt) << c.typed;
        // On disk straight after Save: nothing waits for the product to be left.
        EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), before + (c.booked ? 1 : 0))
            << c.typed;
        EXPECT_EQ(product->costPrice(), c.cost) << "kept to 4 places: " << c.typed;
    }
    const Ref<InventoryMovement> row = costRows().last();
    EXPECT_EQ(row->costLine(), QStringLiteral("cost ₵2.00 → ₵1,002.50"));
    EXPECT_EQ(row->quantityChange(), 0);
    EXPECT_EQ(row->stockAfter(), 7);
    EXPECT_EQ(row->performedBy(), boss);

    // Typed and put back before Save: nothing to book.
    const Ref<Product> oil = addProduct(store.context(), {.name = QStringLiteral("Oil"), .cost = 9});
    model.select(oil);
    model.enter(ProductsViewModel::Entry::costPrice, QStringLiteral("11"));
    model.enter(ProductsViewModel::Entry::costPrice, QStringLiteral("9"));
    EXPECT_FALSE(model.hasUnsavedEdits());
    const qsizetype booked = costRows().size();
    ASSERT_EQ(model.save(), std::nullopt);
    EXPECT_EQ(costRows().size(), booked);
}

// A form that wrote its whole copy back would put back the stock a sale took and the cost a
// delivery set while it was open.
TEST_F(ProductsViewModelTest, SaveWritesOnlyWhatWasTypedOverChangesMadeMeanwhile)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 10, .cost = 2});
    model.select(soap);
    model.enter(ProductsViewModel::Entry::sellingPrice, QStringLiteral("5"));
    InventoryService inventory(store.context());
    performUnitOfWork(store.context(), [&] { inventory.recordDelivery(soap, 10, QString(), QString(), 3.0, nullptr); });
    EXPECT_EQ(model.stockOnHand(), 20) << "the form shows the stock as it is now";

    ASSERT_EQ(model.save(), std::nullopt);
    store.reopen();
    const Ref<Product> onDisk = store.context().fetchFirst<Product>();
    EXPECT_EQ(onDisk->sellingPrice(), 5);
    EXPECT_EQ(onDisk->stockQuantity(), 20);
    EXPECT_EQ(onDisk->costPrice(), 2.5);
    EXPECT_EQ(store.context().count<InventoryMovement>(InventoryMovement::Col::typeRaw == "costChange"), 0)
        << "a delivery is no edit";
}

TEST_F(ProductsViewModelTest, TextThatIsNoNumberIsRefusedAndNothingIsSaved)
{
    using Entry = ProductsViewModel::Entry;
    const Ref<Product> soap = addProduct(store.context(), {.stock = 1, .cost = 2});
    const struct {
        Entry entry;
        const char* typed;
        const char* problem;
    } cases[] = {
        {Entry::sellingPrice, "45O", "Enter an amount such as 1,250.00."},
        {Entry::costPrice, "-1", "Enter an amount of 0 or more."},
        {Entry::reorderLevel, "two", "Enter a quantity such as 2.5."},
        {Entry::commission, "ten", "Enter a percentage from 0 to 100, or leave it blank."},
    };
    for (const auto& c : cases) {
        model.select(soap);
        model.enter(c.entry, QString::fromUtf8(c.typed));
        EXPECT_EQ(model.entryProblem(c.entry), QString::fromUtf8(c.problem)) << c.typed;
        EXPECT_TRUE(model.hasUnsavedEdits()) << c.typed;
        EXPECT_EQ(model.save(), QString::fromUtf8(c.problem)) << c.typed;
        model.select(nullptr);
    }
    EXPECT_EQ(soap->sellingPrice(), 0);
    EXPECT_EQ(soap->costPrice(), 2);

    model.select(soap);
    model.enter(Entry::sellingPrice, QStringLiteral("abc"));
    model.enter(Entry::sellingPrice, QStringLiteral("1,250.00"));
    EXPECT_EQ(model.entryProblem(Entry::sellingPrice), std::nullopt) << "put right";
    ASSERT_EQ(model.save(), std::nullopt);
    EXPECT_EQ(soap->sellingPrice(), 1250);
}

TEST(SuppliersViewModel, SearchesNamePhoneAndEmailInAnyCaseAndNeedsAName)
{
    TestStore store;
    SuppliersViewModel model(store.context());
    const Ref<Supplier> first = model.addSupplier();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 0) << "not before Save";
    first->setName(QStringLiteral("Ébène Foods"));
    first->setPhone(QStringLiteral("024 555 0101"));
    ASSERT_EQ(model.save(), std::nullopt);
    const Ref<Supplier> second = model.addSupplier();
    second->setName(QStringLiteral("  "));
    EXPECT_EQ(model.save(), "Enter a supplier name.");
    second->setName(QStringLiteral("Akosua Trading "));
    second->setEmail(QStringLiteral("Orders@Akosua.com"));
    ASSERT_EQ(model.save(), std::nullopt);
    EXPECT_EQ(model.selectedSupplier()->name(), QStringLiteral("Akosua Trading"));

    for (const auto& [search, name] : {std::pair{"ÉBÈNE", "Ébène Foods"}, {"555", "Ébène Foods"},
                                       {"orders@", "Akosua Trading"}}) {
        model.setSearchText(QString::fromUtf8(search));
        ASSERT_EQ(model.page().size(), 1) << search;
        EXPECT_EQ(model.page().first().name, QString::fromUtf8(name)) << search;
    }
}
