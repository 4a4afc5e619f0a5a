// Every figure of the Dashboard, read as the screen reads them on each showing, on the five-year
// store: today's sales, what customers owe, the products to reorder and the till.

#include "benchstores.h"

#include "clock/clock.h"
#include "customers/accountsservice.h"
#include "records/posschema.h"
#include "reports/dashboardviewmodel.h"
#include "startup/sessionstore.h"
#include "store/modelcontainer.h"
#include "till/tillservice.h"

#include <benchmark/benchmark.h>

namespace {

// "today" as the store's busiest day or its last one, at closing time.
QDate dayOf(ModelContext& context, bool busiest)
{
    const QString sql =
        busiest ? QStringLiteral("SELECT date(\"timestamp\", 'unixepoch', 'localtime') AS day FROM \"Sale\" "
                                 "GROUP BY day ORDER BY COUNT(*) DESC LIMIT 1")
                : QStringLiteral("SELECT date(MAX(\"timestamp\"), 'unixepoch', 'localtime') FROM \"Sale\"");
    return QDate::fromString(context.scalar(sql).toString(), Qt::ISODate);
}

void BM_DashboardRefresh(benchmark::State& state, bool busiest)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    const Clock::Override clock{QDateTime(dayOf(context, busiest), QTime(21, 0))};
    AccountsService accounts(context);
    TillService till(context);
    SessionStore session;
    DashboardViewModel dashboard(context, accounts, till, session);
    for (auto _ : state)
        dashboard.refresh();
    if (dashboard.errorMessage()) {
        state.SkipWithError(qPrintable(*dashboard.errorMessage()));
        return;
    }
    state.counters["transactions"] = double(dashboard.daily().transactionCount);
    state.counters["methods"] = double(dashboard.paymentTotals().size());
    state.counters["lowStock"] = double(dashboard.lowStock().size());
    state.counters["owed"] = dashboard.owedToYou();
}
BENCHMARK_CAPTURE(BM_DashboardRefresh, busiestDay, true)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_DashboardRefresh, lastDay, false)->UseRealTime()->Unit(benchmark::kMillisecond);

// "Owed to You" alone: the grouped sums over every account.
void BM_DashboardOwedToYou(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    AccountsService accounts(context);
    qsizetype accountsRead = 0;
    for (auto _ : state)
        accountsRead = accounts.balancesByCustomer().size();
    state.counters["accounts"] = double(accountsRead);
}
BENCHMARK(BM_DashboardOwedToYou)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
