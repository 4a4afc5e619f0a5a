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

TEST(RecordLayer, OneObjectPerRowAndFetchesSeeUnsavedWork)
{
    TestStore store;
    auto& context = store.context();
    QSignalSpy spy(&context, &ModelContext::didChange);
    context.save(); // nothing to save, nothing announced
    makeSale(context, QStringLiteral("A"), 2);
    // Not saved yet, but fetches and counts include it.
    EXPECT_EQ(context.count<SaleItem>(), 2);
    auto first = context.fetch<Sale>();
    auto second = context.fetch<Sale>(Sale::Col::invoiceNumber == QStringLiteral("A"));
    ASSERT_EQ(first.size(), 1);
    ASSERT_EQ(second.size(), 1);
    EXPECT_EQ(first.first().get(), second.first().get());
    EXPECT_EQ(first.first()->items().size(), 2);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 0);
    EXPECT_EQ(spy.count(), 0);
    context.save();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 1);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.first().first().value<QSet<QString>>(), (QSet<QString>{"Sale", "SaleItem", "Payment"}));
}

TEST(RecordLayer, DeleteRulesCascadeAndNullify)
{
    TestStore store;
    auto& context = store.context();
    auto product = std::make_shared<Product>();
    product->setName(QStringLiteral("Milo"));
    auto shift = std::make_shared<TillShift>();
    context.insert(shift);
    auto sale = makeSale(context, QStringLiteral("S1"), 2);
    sale->setTillShift(shift);
    for (const auto& item : sale->items()) {
        item->setProduct(product);
        item->setProductNameSnapshot(QStringLiteral("Milo"));
    }
    auto movement = std::make_shared<CashMovement>();
    movement->setTillShift(shift);
    context.insert(movement);
    auto stockLine = std::make_shared<InventoryMovement>();
    stockLine->setProduct(product);
    context.insert(stockLine);
    context.save();

    context.remove(product); // nullify: the sold lines and the stock history stay
    context.save();
    auto items = context.fetch<SaleItem>();
    ASSERT_EQ(items.size(), 2);
    EXPECT_FALSE(items.first()->product());
    EXPECT_EQ(items.first()->productNameSnapshot(), QStringLiteral("Milo"));
    EXPECT_EQ(context.count<InventoryMovement>(), 1);
    EXPECT_FALSE(stockLine->product());

    context.remove(shift); // cascade to cash movements, nullify on sales
    context.save();
    EXPECT_EQ(context.count<CashMovement>(), 0);
    EXPECT_FALSE(sale->tillShift());

    context.remove(sale); // cascade to items and payments
    context.save();
    store.close();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("SaleItem")), 0);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Payment")), 0);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("TillShift")), 0);
}

TEST(RecordLayer, ManyToManyKeepsOrderAndLosesDeletedMembers)
{
    TestStore store;
    auto& context = store.context();
    auto vat = std::make_shared<Tax>();
    vat->setName(QStringLiteral("VAT"));
    auto nhil = std::make_shared<Tax>();
    nhil->setName(QStringLiteral("NHIL"));
    auto group = std::make_shared<TaxGroup>();
    group->setTaxes({vat, nhil}); // both join the context with the group
    context.insert(group);
    context.save();
    store.reopen();

    auto& reopened = store.context();
    const Ref<TaxGroup> read = reopened.fetchFirst<TaxGroup>();
    const auto taxes = read->taxes();
    ASSERT_EQ(taxes.size(), 2);
    EXPECT_EQ(taxes[0]->name(), QStringLiteral("VAT"));
    EXPECT_EQ(taxes[1]->groups().size(), 1);

    reopened.remove(taxes[0]);
    EXPECT_EQ(read->taxes().size(), 1);
    reopened.rollback();
    EXPECT_EQ(read->taxes().size(), 2);
    reopened.remove(taxes[0]);
    reopened.save();
    store.reopen();
    EXPECT_EQ(store.context().fetchFirst<TaxGroup>()->taxes().size(), 1);
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
        {other, {"not a Brindle store"}},
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
