// The Audit Log on the five-year store, as an admin uses it: the screen opening on its last week,
// each change of a filter (action, days, text) with the count and the first page it shows, and a
// page a thousand pages down, which must cost what the first does.

#include "benchstores.h"

#include "access/approvalservice.h"
#include "records/posschema.h"
#include "records/records.h"
#include "reports/auditlogviewmodel.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <optional>

namespace {

ModelContext& readContext()
{
    static ModelContainer container(fiveYearStorePath(), POSSchema::description());
    return container.mainContext();
}

QDate logDay(const char* aggregate)
{
    return Record::dateFromSeconds(readContext()
                                       .scalar(QStringLiteral("SELECT %1(timestamp) FROM AuditEntry")
                                                   .arg(QLatin1String(aggregate)))
                                       .toDouble())
        .date();
}

struct Filter {
    std::optional<AuditAction> action;
    int days = 7; // back from the last day of the log; 0 for all of it
    const char* search = "";
};

// What the screen does after a filter changed: the count line and the first page.
void BM_AuditLogFilter(benchmark::State& state, Filter filter)
{
    ApprovalService approvals(readContext());
    AuditLogViewModel screen(readContext(), approvals);
    const QDate last = logDay("MAX");
    screen.setTo(last);
    screen.setFrom(filter.days == 0 ? logDay("MIN") : last.addDays(-filter.days));
    screen.setAction(filter.action);
    const QString search = QString::fromUtf8(filter.search);
    qint64 rows = 0;
    bool upper = false;
    for (auto _ : state) {
        // Typed in the other case each time, so that no search is answered from the one before.
        upper = !upper;
        screen.setSearch(upper ? search.toUpper() : search);
        benchmark::DoNotOptimize(screen.countText());
        rows = screen.page(std::nullopt).size();
    }
    state.counters["rows"] = double(rows);
    state.SetLabel(screen.countText().toStdString());
}
BENCHMARK_CAPTURE(BM_AuditLogFilter, firstPage, Filter{})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, voidsThisWeek, Filter{AuditAction::voidSale})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, voidsFiveYears, Filter{AuditAction::voidSale, 0})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, priceChangesFiveYears, Filter{AuditAction::priceChange, 0})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, thirtyDays, Filter{std::nullopt, 30})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, aYear, Filter{std::nullopt, 365})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, fiveYears, Filter{std::nullopt, 0})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, searchCashierThisWeek, Filter{std::nullopt, 7, "Kofi"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, searchCashierFiveYears, Filter{std::nullopt, 0, "Kofi"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, searchReasonFiveYears, Filter{std::nullopt, 0, "dented"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, searchNothingFiveYears, Filter{std::nullopt, 0, "no such text"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_AuditLogFilter, refundsSearchedFiveYears, Filter{AuditAction::refund, 0, "faulty"})
    ->Unit(benchmark::kMillisecond);

// The first search after the screen opened or the log changed, which reads the log's words first.
void BM_AuditLogFirstSearch(benchmark::State& state)
{
    const ApprovalService::LogFilter filter{logDay("MIN"), logDay("MAX"), std::nullopt, QStringLiteral("dented")};
    qint64 count = 0;
    for (auto _ : state) {
        ApprovalService approvals(readContext());
        count = approvals.logCount(filter);
    }
    state.counters["entries"] = double(count);
}
BENCHMARK(BM_AuditLogFirstSearch)->Unit(benchmark::kMillisecond);

// The page after 999 full ones of all five years, the key found by scrolling there.
void BM_AuditLogThousandthPage(benchmark::State& state)
{
    ApprovalService approvals(readContext());
    const ApprovalService::LogFilter filter{logDay("MIN"), logDay("MAX"), std::nullopt, QString()};
    std::optional<std::pair<double, QString>> after;
    for (int page = 0; page < 999; ++page) {
        const QList<ApprovalService::LogRow> rows = approvals.logPage(filter, after, AuditLogViewModel::pageSize);
        if (rows.isEmpty()) {
            state.SkipWithError("the log has fewer than a thousand pages");
            return;
        }
        after = std::pair(rows.last().timestamp, rows.last().id);
    }
    qint64 rows = 0;
    for (auto _ : state)
        rows = approvals.logPage(filter, after, AuditLogViewModel::pageSize).size();
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_AuditLogThousandthPage)->Unit(benchmark::kMillisecond);

} // namespace
