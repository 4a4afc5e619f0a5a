// Checkout on a copy of the five-year store, beside the same rows written by a hand-made SQLite
// transaction: the difference is what the record layer and the services cost on top of the disk.

#include "benchstores.h"
#include "writablestore.h"

#include "records/posschema.h"
#include "records/records.h"
#include "selling/salesservice.h"
#include "stock/inventoryservice.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <QFileInfo>

#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <memory>

namespace {

constexpr int linesPerSale = 5;

// Five stocked products from the middle of the catalogue and a customer, by id.
struct SaleParts {
    QStringList productIds;
    QString customerId;
};

SaleParts saleParts(ModelContext& context)
{
    SaleParts parts;
    SqliteStatement products = context.connection().prepare(
        QStringLiteral(
            "SELECT id FROM Product WHERE productTypeRaw = 'inventory' ORDER BY id LIMIT %1 OFFSET 500")
            .arg(linesPerSale));
    while (products.step())
        parts.productIds << products.text(0);
    parts.customerId = context.connection()
                           .scalar(QStringLiteral("SELECT id FROM Customer ORDER BY id LIMIT 1 OFFSET 2500"))
                           .toString();
    return parts;
}

void BM_CheckoutFiveLineCashSaleWithCustomer(benchmark::State& state)
{
    WritableStore store;
    ModelContext& context = store.context;
    const Ref<AppSettings> settings = store.settings;
    const SaleParts parts = saleParts(context);
    if (!settings || parts.productIds.size() != linesPerSale || parts.customerId.isEmpty()) {
        state.SkipWithError("the store lacks settings, products or customers");
        return;
    }
    Cart cart;
    for (const QString& id : parts.productIds) {
        const Ref<Product> product = context.find<Product>(QUuid(id));
        // Enough on hand for every iteration, through the ledger like any count.
        store.inventory.adjust(product, product->stockQuantity() + 1000000, QStringLiteral("Benchmark"),
                               store.cashier);
        cart.addOrIncrement(product, 1);
    }
    cart.setCustomer(context.find<Customer>(QUuid(parts.customerId)));
    const double total = cart.calculation(settings->taxInclusivePricing()).total;
    const QList<PaymentInput> cash = {{PaymentMethodType::cash, total, std::ceil(total / 10) * 10, {}}};

    for (auto _ : state) {
        const Ref<Sale> sale = store.sales.checkout(cart, cash, store.cashier, nullptr, *settings);
        benchmark::DoNotOptimize(sale);
    }
}
BENCHMARK(BM_CheckoutFiveLineCashSaleWithCustomer)
    ->Repetitions(5)
    ->DisplayAggregatesOnly(true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// sqlite3 at its plainest: statements prepared once, every value bound, nothing else around it; the
// connection is set up as the store sets up its own, so the disk costs the same.
class RawStatement {
public:
    RawStatement(sqlite3* db, const char* sql)
    {
        sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    }
    ~RawStatement() { sqlite3_finalize(m_statement); }
    RawStatement& text(int index, const QByteArray& value)
    {
        sqlite3_bind_text(m_statement, index, value.constData(), int(value.size()), SQLITE_TRANSIENT);
        return *this;
    }
    RawStatement& real(int index, double value)
    {
        sqlite3_bind_double(m_statement, index, value);
        return *this;
    }
    RawStatement& integer(int index, qint64 value)
    {
        sqlite3_bind_int64(m_statement, index, value);
        return *this;
    }
    bool run()
    {
        const bool done = sqlite3_step(m_statement) == SQLITE_DONE;
        sqlite3_reset(m_statement);
        return done;
    }
    bool ready() const { return m_statement != nullptr; }

private:
    sqlite3_stmt* m_statement = nullptr;
};

QByteArray newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toUtf8();
}

void BM_HandWrittenSqliteSale(benchmark::State& state)
{
    struct Line {
        QByteArray id;
        double price, stock;
    };
    QList<Line> lines;
    QByteArray customer, settings;
    qint64 sequence = 0, points = 0;
    {
        ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
        ModelContext& context = container.mainContext();
        const SaleParts parts = saleParts(context);
        for (const QString& id : parts.productIds) {
            const Ref<Product> product = context.find<Product>(QUuid(id));
            lines.append({id.toUtf8(), product->sellingPrice(), product->stockQuantity() + 1000000});
        }
        const Ref<AppSettings> found = context.fetchFirst<AppSettings>();
        const Ref<Customer> buyer = context.find<Customer>(QUuid(parts.customerId));
        if (!found || !buyer || lines.size() != linesPerSale) {
            state.SkipWithError("the store lacks settings, products or customers");
            return;
        }
        settings = found->idText().toUtf8();
        sequence = found->lastReceiptSequence();
        customer = buyer->idText().toUtf8();
        points = buyer->loyaltyPoints();
    }

    sqlite3* db = nullptr;
    sqlite3_open_v2(fiveYearStoreCopy().toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(db, sqlite3_close);
    sqlite3_exec(db,
                 "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON; "
                 "PRAGMA cache_size=-32768; PRAGMA wal_autocheckpoint=10000",
                 nullptr, nullptr, nullptr);
    RawStatement begin(db, "BEGIN IMMEDIATE");
    RawStatement commit(db, "COMMIT");
    RawStatement insertSale(db,
                            "INSERT INTO Sale (id, invoiceNumber, timestamp, statusRaw, subtotal, taxTotal, "
                            "total, pointsEarned, customer) VALUES (?, ?, ?, 'completed', ?, 0, ?, ?, ?)");
    RawStatement insertItem(db,
                            "INSERT INTO SaleItem (id, product, productNameSnapshot, quantity, unitPrice, "
                            "unitCostSnapshot, taxRateSnapshot, sale) VALUES (?, ?, 'Item', 1, ?, 0, 0, ?)");
    RawStatement insertMovement(db,
                                "INSERT INTO InventoryMovement (id, product, typeRaw, quantityChange, "
                                "stockAfter, reason, relatedSale, timestamp) VALUES (?, ?, 'saleDeduction', "
                                "-1, ?, ?, ?, ?)");
    RawStatement updateProduct(db, "UPDATE Product SET stockQuantity = ?, updatedAt = ? WHERE id = ?");
    RawStatement insertPayment(db, "INSERT INTO Payment (id, sale, methodRaw, amount, tenderedAmount, "
                                   "changeGiven, timestamp) VALUES (?, ?, 'cash', ?, ?, 0, ?)");
    RawStatement updateSettings(db, "UPDATE AppSettings SET lastReceiptSequence = ? WHERE id = ?");
    RawStatement insertEntry(db, "INSERT INTO LoyaltyEntry (id, customer, points, balanceAfter, kindRaw, "
                                 "reference, timestamp) VALUES (?, ?, ?, ?, 'earned', ?, ?)");
    RawStatement updateCustomer(db, "UPDATE Customer SET loyaltyPoints = ? WHERE id = ?");
    for (const RawStatement* statement :
         {&begin, &commit, &insertSale, &insertItem, &insertMovement, &updateProduct, &insertPayment,
          &updateSettings, &insertEntry, &updateCustomer}) {
        if (!statement->ready()) {
            state.SkipWithError(sqlite3_errmsg(db));
            return;
        }
    }

    double total = 0;
    for (const Line& line : lines)
        total += line.price;
    const qint64 earned = qint64(total / 10);
    bool ok = true;
    for (auto _ : state) {
        const double now = double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
        const QByteArray sale = newId();
        const QByteArray invoice = QStringLiteral("INV-%1-%2")
                                       .arg(QDate::currentDate().toString(QStringLiteral("yyyyMMdd")))
                                       .arg(++sequence, 4, 10, QLatin1Char('0'))
                                       .toUtf8();
        points += earned;
        ok &= begin.run();
        ok &= insertSale.text(1, sale)
                  .text(2, invoice)
                  .real(3, now)
                  .real(4, total)
                  .real(5, total)
                  .integer(6, earned)
                  .text(7, customer)
                  .run();
        for (Line& line : lines) {
            line.stock -= 1;
            ok &= insertItem.text(1, newId()).text(2, line.id).real(3, line.price).text(4, sale).run();
            ok &= insertMovement.text(1, newId())
                      .text(2, line.id)
                      .real(3, line.stock)
                      .text(4, "Sale " + invoice)
                      .text(5, sale)
                      .real(6, now)
                      .run();
            ok &= updateProduct.real(1, line.stock).real(2, now).text(3, line.id).run();
        }
        ok &= insertPayment.text(1, newId()).text(2, sale).real(3, total).real(4, total).real(5, now).run();
        ok &= updateSettings.integer(1, sequence).text(2, settings).run();
        ok &= insertEntry.text(1, newId())
                  .text(2, customer)
                  .integer(3, earned)
                  .integer(4, points)
                  .text(5, invoice)
                  .real(6, now)
                  .run();
        ok &= updateCustomer.integer(1, points).text(2, customer).run();
        ok &= commit.run();
    }
    if (!ok)
        state.SkipWithError(sqlite3_errmsg(db));
}
BENCHMARK(BM_HandWrittenSqliteSale)
    ->Repetitions(5)
    ->DisplayAggregatesOnly(true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
