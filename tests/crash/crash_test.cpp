#include "customers/loyaltyservice.h"
#include "records/posschema.h"
#include "records/records.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace {

// Each query counts the rows that break one invariant; every count must be 0.
const char* const brokenRowQueries[] = {
    // Every sale and refund has its lines and payments, all of them.
    "SELECT COUNT(*) FROM Sale s WHERE NOT EXISTS (SELECT 1 FROM SaleItem i WHERE i.sale = s.id) "
    "OR NOT EXISTS (SELECT 1 FROM Payment p WHERE p.sale = s.id)",
    "SELECT COUNT(*) FROM Sale s WHERE abs(s.subtotal - (SELECT SUM(i.unitPrice * i.quantity) FROM SaleItem i "
    "WHERE i.sale = s.id)) > 0.00501",
    "SELECT COUNT(*) FROM Sale s WHERE abs(s.total - (SELECT SUM(p.amount) FROM Payment p WHERE p.sale = s.id)) "
    "> 0.01001",
    // What came back of each line is what its refunds hold, and the original's status says so.
    "SELECT COUNT(*) FROM SaleItem i JOIN Sale s ON s.id = i.sale WHERE s.refundOfSaleID IS NULL AND "
    "abs(i.returnedQuantity + COALESCE((SELECT SUM(r.quantity) FROM SaleItem r JOIN Sale rs ON rs.id = r.sale "
    "WHERE rs.refundOfSaleID = s.id AND r.product = i.product), 0)) > 0.0005",
    "SELECT COUNT(*) FROM Sale s WHERE s.refundOfSaleID IS NULL AND s.statusRaw != 'voided' AND s.statusRaw != "
    "CASE WHEN NOT EXISTS (SELECT 1 FROM SaleItem i WHERE i.sale = s.id AND i.returnedQuantity > 0) "
    "THEN 'completed' WHEN EXISTS (SELECT 1 FROM SaleItem i WHERE i.sale = s.id AND "
    "round(i.quantity * 1000) > round(i.returnedQuantity * 1000)) THEN 'partiallyRefunded' ELSE 'refunded' END",
    "SELECT COUNT(*) FROM Sale r WHERE r.refundOfSaleID IS NOT NULL AND (r.statusRaw != 'refunded' OR "
    "NOT EXISTS (SELECT 1 FROM Sale s WHERE s.id = r.refundOfSaleID AND s.statusRaw IN ('partiallyRefunded', "
    "'refunded')))",
    // Each stock-tracked line moved its stock once, back once more when its sale was voided, and
    // nothing else moved.
    "SELECT COUNT(*) FROM SaleItem i JOIN Sale s ON s.id = i.sale WHERE i.productTypeRaw = 'inventory' AND "
    "(SELECT COUNT(*) FROM InventoryMovement m WHERE m.relatedSale = s.id AND m.product = i.product AND "
    "abs(m.quantityChange + i.quantity) < 0.0005 AND m.typeRaw = CASE WHEN s.refundOfSaleID IS NULL THEN "
    "'saleDeduction' ELSE 'returnRestock' END) != 1",
    "SELECT COUNT(*) FROM SaleItem i JOIN Sale s ON s.id = i.sale WHERE i.productTypeRaw = 'inventory' AND "
    "s.statusRaw = 'voided' AND (SELECT COUNT(*) FROM InventoryMovement m WHERE m.relatedSale = s.id AND "
    "m.product = i.product AND abs(m.quantityChange - i.quantity) < 0.0005 AND m.typeRaw = 'voidRestock') != 1",
    "SELECT COUNT(*) FROM Sale s WHERE (SELECT COUNT(*) FROM InventoryMovement m WHERE m.relatedSale = s.id) != "
    "(SELECT COUNT(*) FROM SaleItem i WHERE i.sale = s.id AND i.productTypeRaw = 'inventory') * "
    "(1 + (s.statusRaw = 'voided'))",
    "SELECT COUNT(*) FROM InventoryMovement m WHERE NOT EXISTS (SELECT 1 FROM Sale s WHERE s.id = "
    "m.relatedSale)",
    // Loyalty balances are the sums of their ledgers; each row's points are in it, and a void gives
    // back what was spent once and takes back at most what was earned.
    "SELECT COUNT(*) FROM Customer c WHERE c.loyaltyPoints != (SELECT COALESCE(SUM(e.points), 0) FROM "
    "LoyaltyEntry e WHERE e.customer = c.id)",
    "SELECT COUNT(*) FROM Sale s WHERE s.pointsEarned - s.pointsRedeemed != (SELECT COALESCE(SUM(e.points), 0) "
    "FROM LoyaltyEntry e WHERE e.reference = s.invoiceNumber AND e.kindRaw NOT IN ('voidReturn', "
    "'voidReversal'))",
    "SELECT COUNT(*) FROM Sale s WHERE (SELECT COALESCE(SUM(e.points), 0) FROM LoyaltyEntry e WHERE "
    "e.reference = s.invoiceNumber AND e.kindRaw = 'voidReturn') != (s.statusRaw = 'voided') * s.pointsRedeemed "
    "OR (SELECT COALESCE(-SUM(e.points), 0) FROM LoyaltyEntry e WHERE e.reference = s.invoiceNumber AND "
    "e.kindRaw = 'voidReversal') NOT BETWEEN 0 AND (s.statusRaw = 'voided') * s.pointsEarned",
    // A hold has every line its note counts, or isn't there at all.
    "SELECT COUNT(*) FROM HeldSale h WHERE h.statusRaw NOT IN ('active', 'recalled', 'cancelled') OR "
    "(SELECT COUNT(*) FROM HeldSaleItem i WHERE i.heldSale = h.id) != CAST(h.note AS INTEGER)",
    "SELECT COUNT(*) FROM HeldSaleItem i WHERE NOT EXISTS (SELECT 1 FROM HeldSale h WHERE h.id = i.heldSale)",
    // A refund's or void's log row stands only for one that was saved.
    "SELECT COUNT(*) FROM AuditEntry a WHERE NOT EXISTS (SELECT 1 FROM Sale s WHERE s.invoiceNumber = CASE "
    "a.actionRaw WHEN 'refund' THEN substr(a.reference, 1, instr(a.reference, ' ') - 1) ELSE a.reference END "
    "AND s.statusRaw = CASE a.actionRaw WHEN 'refund' THEN 'refunded' ELSE 'voided' END)",
};

struct CrashTest : ::testing::Test {
    TestStore store;
    QHash<QString, double> startingStock;

    void SetUp() override
    {
        ModelContext& context = store.context();
        context.insert(std::make_shared<AppSettings>());
        auto cashier = std::make_shared<User>();
        context.insert(cashier);
        auto shift = std::make_shared<TillShift>();
        shift->setCashier(cashier);
        context.insert(shift);
        const struct {
            const char* name;
            double price, taxRate;
            ProductType type;
            SellingUnit unit;
        } products[] = {
            {"Soap", 4.5, 0.219, ProductType::inventory, SellingUnit::each},
            {"Rice", 12.35, 0, ProductType::inventory, SellingUnit::kg},
            {"Oil", 38.99, 0.219, ProductType::inventory, SellingUnit::each},
            {"Milk", 7.2, 0.15, ProductType::inventory, SellingUnit::litre},
            {"Haircut", 60, 0, ProductType::service, SellingUnit::each},
            {"Gift wrap", 2.75, 0.219, ProductType::nonInventory, SellingUnit::each},
        };
        for (const auto& p : products) {
            auto product = std::make_shared<Product>();
            product->setName(QString::fromUtf8(p.name));
            product->setSellingPrice(p.price);
            product->setTaxRate(p.taxRate);
            product->setProductType(p.type);
            product->setSellingUnit(p.unit);
            product->setStockQuantity(p.type == ProductType::inventory ? 1000000 : 0);
            context.insert(product);
            startingStock.insert(product->idText(), product->stockQuantity());
        }
        for (int i = 0; i < 4; ++i) {
            auto customer = std::make_shared<Customer>();
            customer->setName(QStringLiteral("Customer %1").arg(i));
            customer->setAllowCredit(i % 2 == 0);
            customer->setLoyaltyPoints(i * 400);
            context.insert(customer);
        }
        context.save();
        LoyaltyService::recordOpeningBalances(context);
        store.close();
    }

    // Opens the store as the next start would and lists what is broken.
    QStringList brokenInvariants(qint64& sales)
    {
        ModelContainer container(store.path(), POSSchema::description());
        ModelContext& context = container.mainContext();
        QStringList broken;
        if (const QString check = context.scalar(QStringLiteral("PRAGMA integrity_check")).toString();
            check != QStringLiteral("ok"))
            broken << check;
        for (const char* sql : brokenRowQueries) {
            if (const qint64 rows = context.scalar(QString::fromUtf8(sql)).toLongLong(); rows != 0)
                broken << QStringLiteral("%1 rows: %2").arg(rows).arg(QString::fromUtf8(sql));
        }
        for (const Ref<Product>& product :
             context.fetch<Product>(Product::Col::productTypeRaw == "inventory")) {
            const double moved = context
                                     .scalar(QStringLiteral("SELECT COALESCE(SUM(quantityChange), 0) FROM "
                                                            "InventoryMovement WHERE product = ?"),
                                             {product->idText()})
                                     .toDouble();
            if (std::abs(startingStock.value(product->idText()) + moved - product->stockQuantity()) > 0.0005)
                broken << product->name() + QStringLiteral(" stock %1 after %2 moved")
                                                .arg(product->stockQuantity())
                                                .arg(moved);
        }
        // Running numbers 1…n with no gap, n being the stored sequence.
        QList<qint64> numbers;
        SqliteStatement invoices =
            context.connection().prepare(QStringLiteral("SELECT invoiceNumber FROM Sale"));
        while (invoices.step())
            numbers << invoices.text(0).section(u'-', 2).toLongLong();
        std::sort(numbers.begin(), numbers.end());
        for (qsizetype i = 0; i < numbers.size(); ++i) {
            if (numbers[i] != i + 1) {
                broken << QStringLiteral("invoice number %1 where %2 belongs").arg(numbers[i]).arg(i + 1);
                break;
            }
        }
        const qint64 sequence = context.fetchFirst<AppSettings>()->lastReceiptSequence();
        if (sequence != numbers.size())
            broken << QStringLiteral("sequence %1 for %2 sales").arg(sequence).arg(numbers.size());
        sales = numbers.size();
        return broken;
    }
};

} // namespace

TEST_F(CrashTest, EverySaleRefundVoidAndHoldSurvivesAKillWholeOrNotAtAll)
{
    const int kills = qEnvironmentVariableIsSet("TALLYRUN_CRASH_KILLS")
                          ? qEnvironmentVariableIntValue("TALLYRUN_CRASH_KILLS")
                          : 30;
    const quint32 seed = QRandomGenerator::global()->generate();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    QRandomGenerator random(seed);
    QElapsedTimer timer;
    timer.start();
    qint64 sales = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QStringLiteral(CHECKOUT_CRASH_CHILD), {store.path(), QString::number(random.generate())});
        ASSERT_TRUE(child.waitForStarted()) << child.errorString().toStdString();
        ASSERT_TRUE(child.waitForReadyRead(60000)) << "kill " << kill << ": the child never opened the store";
        QThread::msleep(20 + random.bounded(281));
        // Ended by itself, it failed: a checkout threw.
        ASSERT_EQ(child.state(), QProcess::Running) << "kill " << kill << ": a checkout failed (its error is above)";
        child.kill(); // SIGKILL: no handler, no flush, no clean-up
        ASSERT_TRUE(child.waitForFinished());

        const qint64 before = sales;
        const QStringList broken = brokenInvariants(sales);
        ASSERT_TRUE(broken.isEmpty()) << "kill " << kill << ":\n" << broken.join(u'\n').toStdString();
        ASSERT_GE(sales, before);
    }
    EXPECT_GT(sales, 0) << "the children never got a sale in";
    ModelContainer container(store.path(), POSSchema::description());
    // Otherwise the kills above proved less than they seem to.
    for (const char* sql : {
             "SELECT COUNT(*) FROM Sale s WHERE (SELECT COUNT(*) FROM Sale r WHERE r.refundOfSaleID = s.id) > 1",
             "SELECT COUNT(*) FROM Sale WHERE statusRaw = 'voided'",
             "SELECT COUNT(*) FROM HeldSale WHERE statusRaw = 'recalled'",
             "SELECT COUNT(*) FROM HeldSale WHERE statusRaw = 'cancelled'",
         })
        EXPECT_GT(container.mainContext().scalar(QString::fromUtf8(sql)).toLongLong(), 0) << "never done: " << sql;
    std::printf("%d kills, %lld sales, %.1f s\n", kills, static_cast<long long>(sales),
                timer.elapsed() / 1000.0);
}
