// Codes and names that must tell one thing from another: each clash is refused with its sentence,
// writes nothing and leaves what was typed; the unique indexes wait for shared codes to go.

#include "faultscene.h"

#include "access/useraccountsviewmodel.h"
#include "records/productcodeindex.h"
#include "store/storeerror.h"
#include "stores/newmarketmodel.h"
#include "support/testmarkets.h"

#include <gtest/gtest.h>

namespace {
// Soap holds SKU "SP-1" and barcode "600100"; Ama's username is "ama"; a store "Main Shop" is listed.
struct ClashScene : FaultScene {
    TestMarkets markets;
    ProductsViewModel form{context, session};
    UserAccountsViewModel accounts{context, environment.authService(), session};
    NewMarketModel newStore{markets.registry, [](auto&&...) {}};

    ClashScene()
    {
        soap->setSku(QStringLiteral("SP-1"));
        soap->setBarcode(QStringLiteral("600100"));
        context.save();
        markets.registry.createMarket(QStringLiteral("Main Shop"));
        // Opening a new product's form may set up the store's taxes: done before the file is read.
        form.newProduct(ProductType::inventory);
    }

    // A new product with these codes, saved from the form.
    std::optional<QString> saveProduct(const char* sku, const char* barcode)
    {
        form.editedProduct()->setName(QStringLiteral("Rice"));
        form.editedProduct()->setSku(QString::fromUtf8(sku));
        form.editedProduct()->setBarcode(QString::fromUtf8(barcode));
        return form.save();
    }
    // Soap itself, saved again with its codes typed in another case and with blanks around them.
    std::optional<QString> resaveSoap()
    {
        form.select(soap);
        form.editedProduct()->setSku(QStringLiteral(" sp-1 "));
        form.editedProduct()->setBarcode(QStringLiteral("600100 "));
        return form.save();
    }
    std::optional<QString> addUser(const char* username)
    {
        accounts.setNewUserName(QStringLiteral("Kofi"));
        accounts.setNewUsername(QString::fromUtf8(username));
        accounts.setNewPassword(QStringLiteral("secret1"));
        return accounts.createUser() ? std::nullopt : accounts.errorMessage();
    }
    std::optional<QString> addStore(const char* name)
    {
        newStore.setMarketName(QString::fromUtf8(name));
        return newStore.create() ? std::nullopt : newStore.errorMessage();
    }
};
} // namespace

TEST(Duplicates, EachClashIsRefusedWithItsSentenceWritesNothingAndKeepsWhatWasTyped)
{
    const struct {
        const char* what;
        std::function<std::optional<QString>(ClashScene&)> attempt;
        std::optional<QString> refusal;
        std::function<QString(ClashScene&)> shown = {};
        const char* kept = ""; // what the form still shows after the refusal
    } cases[] = {
        {"SKU in another case", [](ClashScene& s) { return s.saveProduct("sp-1", ""); },
         "That SKU already belongs to Soap.", [](ClashScene& s) { return s.form.editedProduct()->sku(); },
         "sp-1"},
        {"barcode with a blank after it", [](ClashScene& s) { return s.saveProduct("", "600100 "); },
         "That barcode already belongs to Soap.",
         [](ClashScene& s) { return s.form.editedProduct()->barcode(); }, "600100"},
        {"barcodes are exact: a letter's case tells them apart",
         [](ClashScene& s) {
             s.soap->setBarcode(QStringLiteral("ab-7"));
             s.context.save();
             return s.saveProduct("", "AB-7");
         },
         std::nullopt},
        {"many products have no codes at all", [](ClashScene& s) { return s.saveProduct("", ""); }, std::nullopt},
        {"a product keeps its own codes", [](ClashScene& s) { return s.resaveSoap(); }, std::nullopt},
        {"username that sign-in reads as ama", [](ClashScene& s) { return s.addUser(" AMA"); },
         "Someone else already has that username. Choose another.",
         [](ClashScene& s) { return s.accounts.newUsername(); }, " AMA"},
        {"a new username", [](ClashScene& s) { return s.addUser("kofi"); }, std::nullopt},
        {"store name in other case with blanks", [](ClashScene& s) { return s.addStore("  main SHOP "); },
         "You already have a store with that name. Choose another.",
         [](ClashScene& s) { return s.newStore.marketName(); }, "  main SHOP "},
        {"a new store name", [](ClashScene& s) { return s.addStore("Osu"); }, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ClashScene scene;
        const QString fileBefore = dumpStoreFile(scene.store.path());
        const qsizetype storesBefore = scene.markets.registry.allMarkets().size();

        EXPECT_EQ(c.attempt(scene), c.refusal);
        if (!c.refusal)
            continue;
        EXPECT_EQ(c.shown(scene), QString::fromUtf8(c.kept));
        EXPECT_EQ(dumpStoreFile(scene.store.path()), fileBefore);
        EXPECT_EQ(scene.markets.registry.allMarkets().size(), storesBefore);
        expectMemoryMatchesFile(scene.context, scene.store.path());
    }
}

namespace {
QStringList uniqueCodeIndexes(ModelContext& context)
{
    return context.rows<QString>(QStringLiteral("SELECT name FROM sqlite_master WHERE name LIKE 'Product_%_unique' "
                                                 "ORDER BY name"),
                                 {}, [](const SqliteStatement& row) { return row.text(0); });
}

void dropUniqueCodeIndexes(ModelContext& context)
{
    context.connection().execute(QStringLiteral("DROP INDEX \"Product_sku_unique\""));
    context.connection().execute(QStringLiteral("DROP INDEX \"Product_barcode_unique\""));
}

const QStringList bothIndexes{"Product_barcode_unique", "Product_sku_unique"};
} // namespace

// A store from before the indexes, where two products already share codes: they are told, nothing
// is changed, and the indexes come once the owner has put the codes right.
TEST(ProductCodeIndex, WaitsUntilNoCodeIsSharedThenRefusesTheNextClashInTheFileItself)
{
    FaultScene scene;
    EXPECT_EQ(uniqueCodeIndexes(scene.context), bothIndexes) << "a new store has them from the start";
    dropUniqueCodeIndexes(scene.context);
    for (const char* name : {"Basmati Rice", "Jasmine Rice"}) {
        scene.saved(FaultScene::named<Product>(name, [](Product& product) {
            product.setBarcode(QStringLiteral("600200"));
            product.setSku(QString::fromLatin1(product.name() == QLatin1String("Basmati Rice") ? "RICE" : "rice"));
        }));
    }
    scene.soap->setBarcode(QStringLiteral("600300"));
    scene.context.save();

    const QStringList shared{"SKU RICE: Basmati Rice, Jasmine Rice", "Barcode 600200: Basmati Rice, Jasmine Rice"};
    EXPECT_EQ(ProductCodeIndex::ensure(scene.context.connection()), shared);
    EXPECT_EQ(uniqueCodeIndexes(scene.context), QStringList());
    EXPECT_EQ(ProductCodeIndex::ensure(scene.context.connection()), shared) << "told again at the next start";

    for (const Ref<Product>& product : scene.context.fetch<Product>(FetchDescriptor(Product::Col::sku == "rice"))) {
        product->setSku(QStringLiteral("RICE-J"));
        product->setBarcode(QStringLiteral("600201"));
    }
    scene.context.save();
    EXPECT_EQ(ProductCodeIndex::ensure(scene.context.connection()), QStringList());
    EXPECT_EQ(uniqueCodeIndexes(scene.context), bothIndexes);
    EXPECT_THROW(scene.context.connection().execute(
                     QStringLiteral("UPDATE \"Product\" SET \"sku\" = 'rice-j' WHERE \"name\" = 'Soap'")),
                 StoreError);
}

// Made at start outside any unit of work: a failure leaves neither index, and the next start
// makes both.
TEST(ProductCodeIndex, MakesBothIndexesOrNeither)
{
    for (int code : injectedFaultCodes()) {
        SCOPED_TRACE("code " + std::to_string(code));
        FaultScene scene;
        dropUniqueCodeIndexes(scene.context);
        failEachCallUntilItSucceeds(
            scene.context, scene.store.path(), code,
            [&scene]() -> std::optional<QString> {
                try {
                    ProductCodeIndex::ensure(scene.context.connection());
                    return std::nullopt;
                } catch (const StoreError& error) {
                    return error.description();
                }
            },
            [&scene] { EXPECT_EQ(uniqueCodeIndexes(scene.context), QStringList()); });
        EXPECT_EQ(uniqueCodeIndexes(scene.context), bothIndexes);
    }
}
