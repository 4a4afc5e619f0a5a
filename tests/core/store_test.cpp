#include "records/posschema.h"
#include "records/records.h"
#include "store/storeerror.h"
#include "support/printers.h"
#include "support/refusalof.h"
#include "support/teststore.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {

void runSql(const QString& path, const char* sql)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &error);
    EXPECT_EQ(rc, SQLITE_OK) << (error ? error : "");
    sqlite3_free(error);
    sqlite3_close(db);
}

Ref<Sale> makeSale(ModelContext& context, const QString& invoice, int lines)
{
    auto sale = std::make_shared<Sale>();
    sale->setInvoiceNumber(invoice);
    context.insert(sale);
    for (int i = 0; i < lines; ++i) {
        auto item = std::make_shared<SaleItem>();
        item->setQuantity(i + 1);
        item->setSale(sale);
        context.insert(item);
    }
    auto payment = std::make_shared<Payment>();
    payment->setSale(sale);
    payment->setAmount(10);
    context.insert(payment);
    return sale;
}

// The description of the refusal to open `path`; empty if it opened.
QString refusalOpening(const QString& path)
{
    return refusalOf([&] { ModelContainer container(path, POSSchema::description()); });
}

} // namespace

TEST(RecordLayer, EveryFieldTypeReadsBackAfterReopening)
{
    TestStore store;
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(1700000000123);
    const QUuid refunded = QUuid::createUuid();
    auto user = std::make_shared<User>();
    user->setPin(QStringLiteral("0042"));
    auto sale = std::make_shared<Sale>();
    sale->setInvoiceNumber(QStringLiteral("Gari 1kg ₵"));
    sale->setTimestamp(when);
    sale->setTotal(1234.56);
    sale->setPointsEarned(9000000000LL);
    sale->setRefundOfSaleID(refunded);
    sale->setCashier(user); // joins the context with the sale
    store.context().insert(sale);
    auto settings = std::make_shared<AppSettings>();
    settings->setLogoPNG(QByteArray("\x89PNG\0\1", 6));
    settings->setTaxInclusivePricing(true);
    store.saved(settings);
    auto product = std::make_shared<Product>();
    product->setCommissionRate(0.125);
    store.saved(product);
    store.reopen();

    auto& context = store.context();
    const Ref<Sale> read = context.find<Sale>(sale->id());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->invoiceNumber() + read->statusRaw(), QStringLiteral("Gari 1kg ₵completed"));
    EXPECT_EQ(read->timestamp(), when);
    EXPECT_EQ(read->total(), 1234.56);
    EXPECT_EQ(read->pointsEarned(), 9000000000LL);
    EXPECT_EQ(read->refundOfSaleID(), refunded);
    EXPECT_FALSE(read->voidedAt() || read->customer());
    ASSERT_TRUE(read->cashier());
    EXPECT_EQ(read->cashier()->pin(), QStringLiteral("0042"));
    const Ref<AppSettings> readSettings = context.find<AppSettings>(settings->id());
    EXPECT_EQ(readSettings->logoPNG(), QByteArray("\x89PNG\0\1", 6));
    EXPECT_TRUE(readSettings->taxInclusivePricing() && !readSettings->defaultTaxGroupID());
    EXPECT_EQ(context.find<Product>(product->id())->commissionRate(), 0.125);
}

TEST(RecordLayer, RollbackUndoesInsertsChangesAndDeletesAcrossRelationships)
{
    TestStore store;
    auto& context = store.context();
    auto kept = makeSale(context, QStringLiteral("KEPT"), 3);
    auto customer = std::make_shared<Customer>();
    customer->setName(QStringLiteral("Kofi"));
    kept->setCustomer(customer);
    context.save();

    QSignalSpy spy(&context, &ModelContext::didChange);
    auto added = makeSale(context, QStringLiteral("ADDED"), 2);
    kept->setTotal(99);
    kept->setCustomer(nullptr);
    customer->setName(QStringLiteral("Kofi Boateng"));
    auto keptItems = kept->items();
    context.remove(keptItems.first());
    context.remove(kept); // cascades to the other items and the payment
    EXPECT_EQ(context.count<SaleItem>(), 2);
    EXPECT_TRUE(kept->isDeleted());

    context.rollback();
    ASSERT_EQ(spy.count(), 1);
    EXPECT_TRUE(spy.first().first().value<QSet<QString>>().contains(QStringLiteral("SaleItem")));
    EXPECT_FALSE(added->isInserted());
    EXPECT_FALSE(kept->isDeleted());
    EXPECT_DOUBLE_EQ(kept->total(), 0);
    EXPECT_EQ(kept->customer(), customer);
    EXPECT_EQ(customer->name(), QStringLiteral("Kofi"));
    EXPECT_EQ(kept->items().size(), 3);
    EXPECT_EQ(kept->payments().size(), 1);
    EXPECT_EQ(context.find<Sale>(added->id()), nullptr);
    EXPECT_EQ(context.find<Sale>(kept->id()), kept);
    EXPECT_FALSE(context.hasChanges());

    // The restored objects are fully live again: a later save writes only the new change.
    kept->setNotes(QStringLiteral("after"));
    context.save();
    store.reopen();
    const Ref<Sale> reread = store.context().fetchFirst<Sale>();
    EXPECT_EQ(reread->notes(), QStringLiteral("after"));
    EXPECT_EQ(reread->items().size(), 3);
    ASSERT_TRUE(reread->customer());
    EXPECT_EQ(reread->customer()->name(), QStringLiteral("Kofi"));
}

TEST(StoreFile, ThatIsNotATallyrunStoreOrOfAnotherShapeIsRefusedAndAnOlderOneGainsItsNewColumns)
{
    QTemporaryDir dir;
    const QString junk = dir.filePath(QStringLiteral("notes.store"));
    QFile file(junk);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    const QString other = dir.filePath(QStringLiteral("other.db"));
    runSql(other, "CREATE TABLE notes (body TEXT)");
    const struct {
        QString path;
        QStringList says;
    } cases[] = {
        {junk, {"could not be opened as a store", StoreError::sentence(StoreError::Kind::damaged)}},
        {other, {"not a Tallyrun store"}},
    };
    for (const auto& c : cases) {
        const QString refusal = refusalOpening(c.path);
        for (const QString& part : c.says)
            EXPECT_TRUE(refusal.contains(part)) << refusal.toStdString();
    }
    EXPECT_EQ(QFileInfo(junk).size(), 4096);
    EXPECT_EQ(countRowsOnDisk(other, QStringLiteral("notes")), 0);

    TestStore store;
    store.close();
    // An older store: a column added since is missing, with a row written before it existed.
    runSql(store.path(), "ALTER TABLE AppSettings DROP COLUMN saleItemTaxModeBackfilled;"
                         "INSERT INTO AppSettings (id) VALUES ('11111111-1111-1111-1111-111111111111')");
    store.reopen();
    const Ref<AppSettings> settings = store.context().fetchFirst<AppSettings>();
    EXPECT_FALSE(settings->saleItemTaxModeBackfilled());
    EXPECT_EQ(settings->businessName(), QStringLiteral("My Retail Store"));
    store.close();

    runSql(store.path(), "ALTER TABLE Sale DROP COLUMN total; ALTER TABLE Sale ADD COLUMN total TEXT");
    EXPECT_TRUE(refusalOpening(store.path()).contains("Sale.total holds TEXT where REAL is expected"));
}

TEST(StoreFile, TablesAndColumnsCarryTheRecordAndFieldNames)
{
    TestStore store;
    for (const Entity* entity : POSSchema::all()) {
        for (int field : entity->columnFields) {
            const QString sql = QStringLiteral("SELECT COUNT(\"%1\") FROM \"%2\"")
                                    .arg(QLatin1String(entity->fields[size_t(field)].name), entity->name);
            EXPECT_EQ(store.context().scalar(sql).toLongLong(), 0) << sql.toStdString();
        }
    }

    // Ids and relationship columns hold upper-case UUID text.
    auto customer = std::make_shared<Customer>();
    store.context().insert(customer);
    store.context().save();
    const QString id = store.context().scalar(QStringLiteral("SELECT id FROM Customer")).toString();
    EXPECT_EQ(id, customer->id().toString(QUuid::WithoutBraces).toUpper());
}
