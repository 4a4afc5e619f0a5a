#include "records/posschema.h"
#include "records/records.h"
#include "store/storeerror.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <unistd.h>

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
    try {
        ModelContainer container(path, POSSchema::description());
    } catch (const StoreError& error) {
        return error.description();
    }
    return {};
}

} // namespace

TEST(RecordLayer, EveryFieldTypeReadsBackAfterReopening)
{
    TestStore store;
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(1700000000123);
    const QUuid refunded = QUuid::createUuid();
    QString saleId, settingsId, productId;
    {
        auto& context = store.context();
        auto user = std::make_shared<User>();
        user->setName(QStringLiteral("Ama Mensah"));
        user->setPin(QStringLiteral("0042"));
        auto sale = std::make_shared<Sale>();
        sale->setInvoiceNumber(QStringLiteral("INV-20261122-0001"));
        sale->setTimestamp(when);
        sale->setTotal(1234.56);
        sale->setPointsEarned(9000000000LL);
        sale->setRefundOfSaleID(refunded);
        sale->setVoidedAt(when);
        sale->setCashier(user); // joins the context with the sale
        context.insert(sale);
        auto settings = std::make_shared<AppSettings>();
        settings->setLogoPNG(QByteArray("\x89PNG\0\1", 6));
        settings->setTaxInclusivePricing(true);
        context.insert(settings);
        auto product = std::make_shared<Product>();
        product->setName(QStringLiteral("Gari 1kg ₵"));
        product->setCommissionRate(0.125);
        context.insert(product);
        context.save();
        saleId = sale->idText();
        settingsId = settings->idText();
        productId = product->idText();
    }
    store.reopen();
    auto& context = store.context();
    auto sale = context.find<Sale>(QUuid::fromString(saleId));
    ASSERT_TRUE(sale);
    EXPECT_EQ(sale->invoiceNumber(), QStringLiteral("INV-20261122-0001"));
    EXPECT_EQ(sale->timestamp(), when);
    EXPECT_DOUBLE_EQ(sale->total(), 1234.56);
    EXPECT_EQ(sale->pointsEarned(), 9000000000LL);
    EXPECT_EQ(sale->refundOfSaleID(), refunded);
    EXPECT_EQ(sale->voidedAt(), when);
    EXPECT_FALSE(sale->voidReason().has_value());
    EXPECT_FALSE(sale->customer());
    ASSERT_TRUE(sale->cashier());
    EXPECT_EQ(sale->cashier()->name(), QStringLiteral("Ama Mensah"));
    EXPECT_EQ(sale->cashier()->pin(), QStringLiteral("0042"));
    EXPECT_EQ(sale->statusRaw(), QStringLiteral("completed")); // default written and read back

    auto settings = context.find<AppSettings>(QUuid::fromString(settingsId));
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->logoPNG(), QByteArray("\x89PNG\0\1", 6));
    EXPECT_TRUE(settings->taxInclusivePricing());
    EXPECT_FALSE(settings->lastBackupAt().has_value());
    EXPECT_FALSE(settings->defaultTaxGroupID().has_value());
    EXPECT_EQ(settings->currencySymbol(), QStringLiteral("₵"));
    EXPECT_DOUBLE_EQ(settings->defaultTaxRate(), 0.15);

    auto product = context.find<Product>(QUuid::fromString(productId));
    EXPECT_EQ(product->name(), QStringLiteral("Gari 1kg ₵"));
    EXPECT_EQ(product->commissionRate(), 0.125);
    EXPECT_DOUBLE_EQ(product->reorderLevel(), 5);
    EXPECT_TRUE(product->isTaxable());
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

TEST(RecordLayer, FilterSortAndLimitAreAppliedInTheQuery)
{
    TestStore store;
    auto& context = store.context();
    const QDateTime base = QDateTime::fromSecsSinceEpoch(1750000000);
    for (int i = 0; i < 10; ++i) {
        auto sale = std::make_shared<Sale>();
        sale->setInvoiceNumber(QStringLiteral("INV-%1").arg(i));
        sale->setTimestamp(base.addSecs(3600 * i));
        sale->setTotal(i % 3);
        context.insert(sale);
    }
    context.save();
    const auto page = context.fetch<Sale>(FetchDescriptor(Sale::Col::timestamp >= base.addSecs(3600 * 4))
                                              .sortedBy(descending(Sale::Col::timestamp))
                                              .limitedTo(3, 1));
    ASSERT_EQ(page.size(), 3);
    EXPECT_EQ(page[0]->invoiceNumber(), QStringLiteral("INV-8"));
    EXPECT_EQ(page[2]->invoiceNumber(), QStringLiteral("INV-6"));
    EXPECT_EQ(context.count<Sale>(Sale::Col::total == 0.0 || Sale::Col::total == 2.0), 7);
    EXPECT_EQ(context.count<Sale>(Sale::Col::invoiceNumber.contains(QStringLiteral("%"))), 0);
    EXPECT_EQ(context.count<Sale>(Sale::Col::voidedAt == QVariant()), 10); // absent compares as IS NULL
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
    const auto names = spy.first().first().value<QSet<QString>>();
    EXPECT_TRUE(names.contains(QStringLiteral("Sale")));
    EXPECT_TRUE(names.contains(QStringLiteral("SaleItem")));

    EXPECT_FALSE(added->isInserted());
    EXPECT_FALSE(kept->isDeleted());
    EXPECT_DOUBLE_EQ(kept->total(), 0);
    EXPECT_EQ(kept->customer(), customer);
    EXPECT_EQ(customer->name(), QStringLiteral("Kofi"));
    EXPECT_EQ(kept->items().size(), 3);
    EXPECT_EQ(kept->payments().size(), 1);
    EXPECT_EQ(context.count<Sale>(), 1);
    EXPECT_EQ(context.find<Sale>(added->id()), nullptr);
    EXPECT_EQ(context.find<Sale>(kept->id()), kept);
    EXPECT_FALSE(context.hasChanges());

    // The restored objects are fully live again: a later save writes only the new change.
    kept->setNotes(QStringLiteral("after"));
    context.save();
    store.reopen();
    auto reread = store.context().fetch<Sale>();
    ASSERT_EQ(reread.size(), 1);
    EXPECT_EQ(reread.first()->notes(), QStringLiteral("after"));
    EXPECT_EQ(reread.first()->items().size(), 3);
    ASSERT_TRUE(reread.first()->customer());
    EXPECT_EQ(reread.first()->customer()->name(), QStringLiteral("Kofi"));
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
    context.save();

    context.remove(product); // nullify: the sold lines stay with their snapshot
    context.save();
    auto items = context.fetch<SaleItem>();
    ASSERT_EQ(items.size(), 2);
    EXPECT_FALSE(items.first()->product());
    EXPECT_EQ(items.first()->productNameSnapshot(), QStringLiteral("Milo"));

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
    auto groups = reopened.fetch<TaxGroup>();
    ASSERT_EQ(groups.size(), 1);
    auto taxes = groups.first()->taxes();
    ASSERT_EQ(taxes.size(), 2);
    EXPECT_EQ(taxes[0]->name(), QStringLiteral("VAT"));
    EXPECT_EQ(taxes[1]->groups().size(), 1);

    reopened.remove(taxes[0]);
    EXPECT_EQ(groups.first()->taxes().size(), 1);
    reopened.rollback();
    EXPECT_EQ(groups.first()->taxes().size(), 2);
    reopened.remove(taxes[0]);
    reopened.save();
    store.reopen();
    auto after = store.context().fetch<TaxGroup>().first()->taxes();
    ASSERT_EQ(after.size(), 1);
    EXPECT_EQ(after.first()->name(), QStringLiteral("NHIL"));
}

TEST(RecordLayer, SaveThatFailsMidwayLeavesTheFileAsItWas)
{
    TestStore store;
    auto& context = store.context();
    makeSale(context, QStringLiteral("BEFORE"), 1);
    context.save();
    // A failure on the last row written stands in for a full disk.
    runSql(store.path(),
           "CREATE TRIGGER refuse BEFORE INSERT ON Payment BEGIN SELECT RAISE(ABORT, 'disk is full'); END");

    QSignalSpy spy(&context, &ModelContext::didChange);
    auto sale = makeSale(context, QStringLiteral("FAILS"), 3);
    sale->setTotal(50);
    try {
        context.save();
        FAIL() << "save should have failed";
    } catch (const StoreError& error) {
        // The person reads a sentence; the statement only reaches the log.
        EXPECT_EQ(error.description(), StoreError::sentence(StoreError::Kind::other));
    }
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 1);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("SaleItem")), 1);
    EXPECT_TRUE(context.hasChanges());

    context.rollback();
    EXPECT_EQ(context.count<Sale>(), 1);
    EXPECT_EQ(context.count<SaleItem>(), 1);

    // The store goes on working once the cause is gone.
    runSql(store.path(), "DROP TRIGGER refuse");
    makeSale(context, QStringLiteral("AFTER"), 2);
    context.save();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("SaleItem")), 3);
}

TEST(StoreFile, ThatIsNotATallyrunStoreIsRefusedWithItsReasonAndLeftAlone)
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
}

TEST(StoreFile, OfAnotherShapeIsRefusedAndAnOlderOneGainsItsNewColumns)
{
    TestStore store;
    store.close();
    // An older store: a column added since is missing, with a row written before it existed.
    runSql(store.path(), "ALTER TABLE AppSettings DROP COLUMN saleItemTaxModeBackfilled;"
                         "INSERT INTO AppSettings (id) VALUES ('11111111-1111-1111-1111-111111111111')");
    store.reopen();
    auto settings = store.context().fetch<AppSettings>();
    ASSERT_EQ(settings.size(), 1);
    EXPECT_FALSE(settings.first()->saleItemTaxModeBackfilled());
    EXPECT_EQ(settings.first()->businessName(), QStringLiteral("My Retail Store"));
    store.close();

    runSql(store.path(), "ALTER TABLE Sale DROP COLUMN total; ALTER TABLE Sale ADD COLUMN total TEXT");
    EXPECT_TRUE(refusalOpening(store.path()).contains("Sale.total holds TEXT where REAL is expected"));
}

TEST(StoreFile, TablesAndColumnsCarryTheRecordAndFieldNames)
{
    TestStore store;
    ASSERT_EQ(POSSchema::all().size(), 23u);
    EXPECT_EQ(POSSchema::all().front()->name, QStringLiteral("User"));
    EXPECT_EQ(POSSchema::all().back()->name, QStringLiteral("Appointment"));
    for (const Entity* entity : POSSchema::all()) {
        for (int field : entity->columnFields) {
            const QString sql = QStringLiteral("SELECT COUNT(\"%1\") FROM \"%2\"")
                                    .arg(QLatin1String(entity->fields[size_t(field)].name), entity->name);
            EXPECT_EQ(store.context().scalar(sql).toLongLong(), 0) << sql.toStdString();
        }
    }
    EXPECT_EQ(store.context().scalar(QStringLiteral("PRAGMA journal_mode")).toString(),
              QStringLiteral("wal"));

    // Ids and relationship columns hold upper-case UUID text.
    auto customer = std::make_shared<Customer>();
    store.context().insert(customer);
    store.context().save();
    const QString id = store.context().scalar(QStringLiteral("SELECT id FROM Customer")).toString();
    EXPECT_EQ(id, customer->id().toString(QUuid::WithoutBraces).toUpper());
}

TEST(StoreFile, InAReadOnlyFolderIsRefusedInPlainWordsWhenItOpens)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes to read-only folders; run as a user to check this";
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("shop.store"));
    { ModelContainer made(path, POSSchema::description()); }
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    try {
        ModelContainer container(path, POSSchema::description());
        FAIL() << "opened a store it can't write";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::readOnly);
        EXPECT_TRUE(error.description().contains(QStringLiteral("read-only"))) << error.what();
    }
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
