// Scrolling to the very end of the longest lists, one page at a time and by key: what it costs per
// page, and that neither prepared statements nor memory pile up on the way.

#include "benchstores.h"

#include "records/posschema.h"
#include "records/records.h"
#include "stock/inventoryviewmodel.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

double residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toDouble() * double(sysconf(_SC_PAGESIZE)) : 0;
}

// SQLite's page cache is bounded by the store's cache_size (32 MiB) and fills on any long read;
// reported apart, so that what grows beyond it shows.
double pageCacheBytes(SqliteConnection& connection)
{
    int current = 0;
    int highest = 0;
    sqlite3_db_status(connection.handle(), SQLITE_DBSTATUS_CACHE_USED, &current, &highest, 0);
    return current;
}

// What grows while a list is paged to its end, sampled after every page.
class Growth {
public:
    explicit Growth(SqliteConnection& connection)
        : m_connection(connection)
        , m_resident(residentBytes())
        , m_cache(pageCacheBytes(connection))
    {
        m_timer.start();
    }

    void sample()
    {
        m_statements = std::max(m_statements, m_connection.cachedStatementCount());
        m_residentGrowth = std::max(m_residentGrowth, residentBytes() - m_resident);
        m_cacheGrowth = std::max(m_cacheGrowth, pageCacheBytes(m_connection) - m_cache);
    }

    void report(benchmark::State& state, qint64 pages, qint64 rows) const
    {
        state.counters["pages"] = double(pages);
        state.counters["rows"] = double(rows);
        state.counters["statements_max"] = m_statements;
        state.counters["rss_growth_MiB"] = m_residentGrowth / mebibyte;
        state.counters["page_cache_growth_MiB"] = m_cacheGrowth / mebibyte;
        state.counters["rss_growth_beyond_cache_MiB"] = (m_residentGrowth - m_cacheGrowth) / mebibyte;
        state.counters["us_per_page"] = m_timer.nsecsElapsed() / 1000.0 / double(std::max<qint64>(pages, 1));
    }

private:
    SqliteConnection& m_connection;
    double m_resident;
    double m_cache;
    int m_statements = 0;
    double m_residentGrowth = 0;
    double m_cacheGrowth = 0;
    QElapsedTimer m_timer;
};

// A line of a sales history list, and its place in the order.
struct SaleRow {
    qint64 rowid;
    double timestamp;
    QString invoiceNumber;
    double total;
    QString statusRaw;
};

constexpr int salesPageSize = 50;

const QString salesColumns =
    QStringLiteral("SELECT rowid, \"timestamp\", \"invoiceNumber\", \"total\", \"statusRaw\" FROM \"Sale\" ");
const QString salesOrder = QStringLiteral(" ORDER BY \"timestamp\" DESC, rowid DESC LIMIT ?");
const QString salesAfterKey = QStringLiteral("WHERE (\"timestamp\", rowid) < (?, ?)");

// Every sale of five years, newest first, the way a sales history list scrolled to its end reads
// them: rows, not records, each page after the last row's (timestamp, rowid).
void BM_PageThroughAllSalesByKey(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    const QString plan = queryPlan(context, salesColumns + salesAfterKey + salesOrder, {1e12, 1, salesPageSize});
    if (plan.contains(QStringLiteral("TEMP B-TREE")) || !plan.contains(QStringLiteral("Sale_timestamp"))) {
        state.SkipWithError(qPrintable(QStringLiteral("a page is not read along the index: ") + plan));
        return;
    }
    const auto read = [](const SqliteStatement& row) {
        return SaleRow{row.integer(0), row.real(1), row.text(2), row.real(3), row.text(4)};
    };

    Growth growth(context.connection());
    qint64 pages = 0;
    qint64 rows = 0;
    for (auto _ : state) {
        std::optional<SaleRow> last;
        for (;;) {
            const QList<SaleRow> page =
                last ? context.rows<SaleRow>(salesColumns + salesAfterKey + salesOrder,
                                             {last->timestamp, last->rowid, salesPageSize}, read)
                     : context.rows<SaleRow>(salesColumns + salesOrder, {salesPageSize}, read);
            ++pages;
            rows += page.size();
            growth.sample();
            if (page.size() < salesPageSize)
                break;
            last = page.last();
        }
    }
    if (rows != context.count<Sale>() * qint64(state.iterations()))
        state.SkipWithError("the pages missed or repeated sales");
    growth.report(state, pages, rows);
}
BENCHMARK(BM_PageThroughAllSalesByKey)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

// Every product's movement history scrolled to its end through the Inventory screen's own paging,
// which builds records: together every movement of five years.
void BM_PageThroughAllMovementHistories(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    const QList<Ref<Product>> products = context.fetch<Product>();
    InventoryViewModel inventory(context);

    Growth growth(context.connection());
    qint64 pages = 0;
    qint64 rows = 0;
    for (auto _ : state) {
        for (const Ref<Product>& product : products) {
            Ref<InventoryMovement> last;
            for (;;) {
                const QList<Ref<InventoryMovement>> page = inventory.movements(product, last);
                ++pages;
                rows += page.size();
                growth.sample();
                if (page.size() < InventoryViewModel::movementPageSize)
                    break;
                last = page.last();
            }
        }
    }
    if (const std::optional<QString> error = inventory.errorMessage())
        state.SkipWithError(qPrintable(*error));
    else if (rows != context.count<InventoryMovement>(InventoryMovement::Col::product.isNotNull()) *
                         qint64(state.iterations()))
        state.SkipWithError("the pages missed or repeated movements");
    growth.report(state, pages, rows);
}
BENCHMARK(BM_PageThroughAllMovementHistories)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
