#include "records/cashmovement.h"
#include "stock/inventoryservice.h"
#include "stock/productsviewmodel.h"
#include "stock/suppliersviewmodel.h"
#include "stockbuilders.h"
#include "store/unitofwork.h"
#include "support/faultloop.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <iostream>

namespace {
using Entry = ProductsViewModel::Entry;

// Every write of the Products and Suppliers forms, failed at each call into SQLite in turn: the
// person sees the plain sentence, the file and memory stay as they were, the form keeps what was
// typed, and the same click then goes through once.
class FormFaultsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        settings = std::make_shared<AppSettings>();
        performUnitOfWork(context, [&] { context.insert(settings); });
        session.setSettings(settings);
    }

    static std::optional<QString> failureOf(ViewModel& model, bool done)
    {
        return done ? std::nullopt : model.errorMessage();
    }

    void report(const char* what, int failures)
    {
        std::cout << "[ injected ] " << what << ": " << failures << " failures\n";
        EXPECT_GT(failures, 0) << what;
    }

    TestStore store;
    ModelContext& context = store.context();
    SessionStore session;
    Ref<AppSettings> settings;
};
} // namespace

TEST_F(FormFaultsTest, ProductCreateSaveAndDelete)
{
    ProductsViewModel model(context, session);
    int created = 0;
    int saved = 0;
    int deleted = 0;
    for (int code : injectedFaultCodes()) {
        const QString name = QStringLiteral("Rice %1").arg(code);
        ASSERT_NE(model.newProduct(ProductType::inventory), nullptr);
        model.editedProduct()->setName(name);
        model.enter(Entry::sellingPrice, QStringLiteral("12.50"));
        created += failEachCallUntilItSucceeds(context, store.path(), code, [&] { return model.save(); }, [&] {
            ASSERT_TRUE(model.isNewProduct());
            EXPECT_EQ(model.editedProduct()->name(), name);
            EXPECT_EQ(model.editedProduct()->sellingPrice(), 12.5);
        });
        const Ref<Product> product = model.selectedProduct();
        ASSERT_NE(product, nullptr);
        EXPECT_EQ(context.count<Product>(Product::Col::name == name), 1) << "one made, not one per try";

        model.enter(Entry::costPrice, QStringLiteral("3.25"));
        model.editedProduct()->setSku(QStringLiteral("RC-%1").arg(code));
        saved += failEachCallUntilItSucceeds(context, store.path(), code, [&] { return model.save(); }, [&] {
            EXPECT_TRUE(model.hasUnsavedEdits());
            EXPECT_EQ(model.editedProduct()->costPrice(), 3.25);
            EXPECT_EQ(model.editedProduct()->sku(), QStringLiteral("RC-%1").arg(code));
            EXPECT_EQ(product->costPrice(), 0) << "the record is as saved";
        });
        EXPECT_EQ(product->costPrice(), 3.25);
        EXPECT_EQ(context.count<InventoryMovement>(InventoryMovement::Col::product == product), 1)
            << "the cost line went with the cost, once";

        deleted += failEachCallUntilItSucceeds(
            context, store.path(), code, [&] { return failureOf(model, model.deleteProduct()); }, [&] {
                EXPECT_EQ(model.selectedProduct(), product) << "still on the form";
                EXPECT_FALSE(product->isDeleted());
            });
        EXPECT_EQ(context.count<Product>(Product::Col::name == name), 0);
    }
    report("product create", created);
    report("product save", saved);
    report("product delete", deleted);
}

TEST_F(FormFaultsTest, CategoryAndSupplierMadeFromTheProductForm)
{
    ProductsViewModel model(context, session);
    int failures = 0;
    for (int code : injectedFaultCodes()) {
        failures += failEachCallUntilItSucceeds(context, store.path(), code, [&] {
            return model.createCategory(QStringLiteral("Grains %1").arg(code), QStringLiteral("#34C759"))
                .errorMessage;
        });
        failures += failEachCallUntilItSucceeds(context, store.path(), code, [&] {
            return model.createSupplier(QStringLiteral("Acme %1").arg(code)).errorMessage;
        });
    }
    const qint64 made = qint64(injectedFaultCodes().size());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), made) << "a retry makes one, not two";
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), made);
    report("category and supplier from the product form", failures);
}

TEST_F(FormFaultsTest, SupplierCreateSaveAndDelete)
{
    SuppliersViewModel model(context);
    int failures = 0;
    for (int code : injectedFaultCodes()) {
        const QString name = QStringLiteral("Akosua %1").arg(code);
        model.addSupplier()->setName(name);
        failures += failEachCallUntilItSucceeds(context, store.path(), code, [&] { return model.save(); }, [&] {
            ASSERT_TRUE(model.isNewSupplier());
            EXPECT_EQ(model.editedSupplier()->name(), name);
        });
        const Ref<Supplier> supplier = model.selectedSupplier();
        ASSERT_NE(supplier, nullptr);

        model.editedSupplier()->setPhone(QStringLiteral("024 555 0101"));
        failures += failEachCallUntilItSucceeds(context, store.path(), code, [&] { return model.save(); }, [&] {
            EXPECT_EQ(model.editedSupplier()->phone(), QStringLiteral("024 555 0101"));
            EXPECT_EQ(supplier->phone(), QString());
        });
        EXPECT_EQ(supplier->phone(), QStringLiteral("024 555 0101"));

        failures += failEachCallUntilItSucceeds(
            context, store.path(), code, [&] { return failureOf(model, model.deleteSupplier()); },
            [&] { EXPECT_EQ(model.selectedSupplier(), supplier); });
    }
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 0);
    report("supplier create, save and delete", failures);
}

// Other screens save many times a minute beside a form being typed into.
TEST_F(FormFaultsTest, AHalfTypedEditIsNeitherSavedByOtherWritesNorLostByTheirRollback)
{
    const Ref<Product> soap = addProduct(context, {.stock = 10, .cost = 2});
    auto acme = std::make_shared<Supplier>();
    acme->setName(QStringLiteral("Acme"));
    performUnitOfWork(context, [&] { context.insert(acme); });
    ProductsViewModel products(context, session);
    SuppliersViewModel suppliers(context);
    products.select(soap);
    products.editedProduct()->setName(QStringLiteral("Soap 250g"));
    products.enter(Entry::sellingPrice, QStringLiteral("4.50"));
    suppliers.select(acme);
    suppliers.editedSupplier()->setPhone(QStringLiteral("024 555 0101"));

    const auto expectStillTypedAndUnsaved = [&] {
        EXPECT_EQ(products.editedProduct()->name(), QStringLiteral("Soap 250g"));
        EXPECT_EQ(products.editedProduct()->sellingPrice(), 4.5);
        EXPECT_TRUE(products.hasUnsavedEdits());
        EXPECT_EQ(suppliers.editedSupplier()->phone(), QStringLiteral("024 555 0101"));
        EXPECT_EQ(soap->name(), QStringLiteral("Soap"));
        EXPECT_EQ(acme->phone(), QString());
        const QString onDisk = dumpStoreFile(store.path());
        EXPECT_FALSE(onDisk.contains(QStringLiteral("Soap 250g")));
        EXPECT_FALSE(onDisk.contains(QStringLiteral("024 555 0101")));
        // Nobody holds the store's write lock while a person types.
        EXPECT_FALSE(context.connection().inTransaction());
    };

    // A pay-in is saved.
    performUnitOfWork(context, [&] {
        auto payIn = std::make_shared<CashMovement>();
        payIn->setAmount(50);
        context.insert(payIn);
    });
    expectStillTypedAndUnsaved();

    // A stock count fails at every step before it goes through.
    InventoryService inventory(context);
    const int failures = failEachCallUntilItSucceeds(
        context, store.path(), SQLITE_FULL,
        [&]() -> std::optional<QString> {
            try {
                performUnitOfWork(context, [&] { inventory.adjust(soap, 7, QStringLiteral("Count"), nullptr); });
                return std::nullopt;
            } catch (const Refusal& refusal) {
                return refusal.description();
            }
        },
        expectStillTypedAndUnsaved);
    report("stock count beside open forms", failures);
    expectStillTypedAndUnsaved();

    ASSERT_EQ(products.save(), std::nullopt);
    ASSERT_EQ(suppliers.save(), std::nullopt);
    store.reopen();
    const Ref<Product> onDisk = store.context().fetchFirst<Product>();
    EXPECT_EQ(onDisk->name(), QStringLiteral("Soap 250g"));
    EXPECT_EQ(onDisk->stockQuantity(), 7) << "the count stands: only what was typed was written";
}
