// Sales history and refunds on the five-year store: a page of the list, near the top and a
// thousand pages down, one cashier's, found by invoice number or by a few letters of a customer's
// name; finding a sale to refund with its amount; and writing a five-line refund.

#include "benchstores.h"
#include "writablestore.h"

#include "records/posschema.h"
#include "records/records.h"
#include "selling/saleshistory.h"
#include "selling/salesservice.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <optional>

namespace {

// The store opened once for every read below; its first open adds the history's indexes.
ModelContext& readContext()
{
    static ModelContainer container(fiveYearStorePath(), POSSchema::description());
    return container.mainContext();
}

// All five years, as someone who widened the dates would see them.
SalesHistory::Filter fiveYears(ModelContext& context, const QString& search = {})
{
    SalesHistory::Filter filter;
    filter.startDate =
        Record::dateFromSeconds(context.scalar(QStringLiteral("SELECT MIN(timestamp) FROM Sale")).toDouble())
            .date();
    filter.endDate =
        Record::dateFromSeconds(context.scalar(QStringLiteral("SELECT MAX(timestamp) FROM Sale")).toDouble())
            .date();
    filter.searchText = search;
    return filter;
}

void measurePage(benchmark::State& state, const SalesHistory::Filter& filter,
                 const std::optional<SalesHistory::Key>& after = std::nullopt)
{
    SalesHistory history(readContext());
    qint64 rows = 0;
    for (auto _ : state) {
        const QList<SalesHistory::Row> page = history.page(filter, after);
        rows = page.size();
        benchmark::DoNotOptimize(page);
    }
    state.counters["rows"] = double(rows);
}

void BM_SalesHistoryFirstPage(benchmark::State& state)
{
    measurePage(state, fiveYears(readContext()));
}
BENCHMARK(BM_SalesHistoryFirstPage)->Unit(benchmark::kMillisecond);

// The page after 999 full ones; the key is found once, by walking there as a person scrolling would.
void BM_SalesHistoryThousandthPage(benchmark::State& state)
{
    SalesHistory history(readContext());
    const SalesHistory::Filter filter = fiveYears(readContext());
    std::optional<SalesHistory::Key> after;
    for (int page = 0; page < 999; ++page)
        after = history.page(filter, after).last().key;
    measurePage(state, filter, after);
}
BENCHMARK(BM_SalesHistoryThousandthPage)->Unit(benchmark::kMillisecond);

void BM_SalesHistoryOneCashiersFirstPage(benchmark::State& state)
{
    SalesHistory::Filter filter = fiveYears(readContext());
    filter.everyone = false;
    filter.cashierID =
        QUuid(readContext()
                  .scalar(QStringLiteral("SELECT id FROM User WHERE roleRaw = 'cashier' LIMIT 1"))
                  .toString());
    measurePage(state, filter);
}
BENCHMARK(BM_SalesHistoryOneCashiersFirstPage)->Unit(benchmark::kMillisecond);

void BM_SalesHistoryExactInvoice(benchmark::State& state)
{
    const QString invoice =
        readContext()
            .scalar(QStringLiteral("SELECT invoiceNumber FROM Sale ORDER BY timestamp LIMIT 1 "
                                   "OFFSET 123456"))
            .toString();
    measurePage(state, fiveYears(readContext(), invoice));
}
BENCHMARK(BM_SalesHistoryExactInvoice)->Unit(benchmark::kMillisecond);

// A few letters of a customer's name: from one customer's to most customers' sales.
void BM_SalesHistoryCustomerName(benchmark::State& state, const char* letters)
{
    measurePage(state, fiveYears(readContext(), QString::fromUtf8(letters)));
}
BENCHMARK_CAPTURE(BM_SalesHistoryCustomerName, rare, "Fuseini Tag")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SalesHistoryCustomerName, surname, "Tagoe")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SalesHistoryCustomerName, few, "kwa")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SalesHistoryCustomerName, common, "ama")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SalesHistoryCustomerName, oneLetter, "e")->Unit(benchmark::kMillisecond);

// Completed sales of five lines or more, from the middle of the five years.
QStringList saleIdsWithFiveLines(ModelContext& context, int count)
{
    QStringList ids;
    SqliteStatement statement = context.connection().prepare(
        QStringLiteral(
            "SELECT s.id FROM Sale s JOIN SaleItem i ON i.sale = s.id WHERE s.statusRaw = 'completed' "
            "AND s.refundOfSaleID IS NULL GROUP BY s.id HAVING COUNT(*) >= 5 LIMIT %1 OFFSET 20000")
            .arg(count));
    while (statement.step())
        ids << statement.text(0);
    return ids;
}

// The refund screen's search and its amount: the sale by its exact number, its lines, the price of
// taking back one of each.
void BM_RefundFindAndAmount(benchmark::State& state)
{
    ModelContext& context = readContext();
    QStringList invoices;
    for (const QString& id : saleIdsWithFiveLines(context, 200))
        invoices << context.find<Sale>(QUuid(id))->invoiceNumber();
    if (invoices.isEmpty()) {
        state.SkipWithError("the store has no sales of five lines");
        return;
    }
    qsizetype next = 0;
    for (auto _ : state) {
        const Ref<Sale> sale = context.fetchFirst<Sale>(
            FetchDescriptor(Sale::Col::invoiceNumber == invoices[next++ % invoices.size()]));
        QList<RefundEntry> entries;
        for (const Ref<SaleItem>& item : sale->items())
            entries.append({item, std::min(item->quantity(), 1.0)});
        benchmark::DoNotOptimize(SalesService::refundAmount(entries));
    }
}
BENCHMARK(BM_RefundFindAndAmount)->Unit(benchmark::kMillisecond);

// One unit of each of five lines of a different sale each time, saved, on a copy of the store.
void BM_WriteRefundFiveLines(benchmark::State& state)
{
    WritableStore store;
    QList<QList<RefundEntry>> refunds;
    QList<Ref<Sale>> originals;
    for (const QString& id : saleIdsWithFiveLines(store.context, 3000)) {
        const Ref<Sale> sale = store.context.find<Sale>(QUuid(id));
        QList<RefundEntry> entries;
        for (const Ref<SaleItem>& item : sale->items().first(5))
            entries.append({item, std::min(item->quantity(), 1.0)});
        originals.append(sale);
        refunds.append(entries);
    }
    if (!store.settings || refunds.isEmpty()) {
        state.SkipWithError("the store lacks settings or sales of five lines");
        return;
    }
    // Across the repetitions too: a sale is refunded once.
    static qsizetype next = 0;
    for (auto _ : state) {
        if (next == refunds.size()) {
            state.SkipWithError("ran out of sales to refund");
            break;
        }
        benchmark::DoNotOptimize(store.sales.writeRefund(originals[next], refunds[next],
                                                         QStringLiteral("Benchmark"), store.cashier, nullptr,
                                                         PaymentMethodType::cash, *store.settings));
        ++next;
    }
}
BENCHMARK(BM_WriteRefundFiveLines)
    ->Repetitions(5)
    ->Iterations(400)
    ->DisplayAggregatesOnly(true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
