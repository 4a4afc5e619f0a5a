// What the Till & Shifts screen reads as it is first shown: the open shift with its figures and cash
// movements, and the first page of the shift history; then the history paged to its end. On the
// five-year store, and on a store of 2,000 shifts made here in a second, for machines without it.

#include "benchstores.h"

#include "access/approvalservice.h"
#include "customers/accountsservice.h"
#include "records/posschema.h"
#include "records/records.h"
#include "startup/sessionstore.h"
#include "store/modelcontainer.h"
#include "till/tillservice.h"
#include "till/tillviewmodel.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

namespace {

// 2,000 closed shifts a day apart, and an open one of 300 cash sales and 10 pay-ins: the size of the
// five-year store's till, without its five years of everything else.
QString twoThousandShiftsStore()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("shifts.store"));
        ModelContainer container(file, POSSchema::description());
        ModelContext& context = container.mainContext();
        auto cashier = std::make_shared<User>();
        cashier->setName(QStringLiteral("Esi"));
        context.insert(cashier);
        const QDateTime start = QDateTime(QDate(2021, 1, 4), QTime(8, 0));
        for (int day = 0; day < 2000; ++day) {
            auto shift = std::make_shared<TillShift>();
            shift->setCashier(cashier);
            shift->setOpenedAt(start.addDays(day));
            shift->setClosedAt(start.addDays(day).addSecs(9 * 3600));
            shift->setOpeningFloat(200);
            shift->setExpectedCash(1450);
            shift->setCountedCash(1450 - day % 3);
            shift->setVariance(-(day % 3));
            shift->setStatusRaw(TillService::closedStatus());
            shift->setClosedBy(cashier);
            context.insert(shift);
        }
        auto open = std::make_shared<TillShift>();
        open->setCashier(cashier);
        open->setOpenedAt(start.addDays(2000));
        open->setOpeningFloat(200);
        context.insert(open);
        for (int number = 0; number < 300; ++number) {
            const Ref<Sale> sale =
                Sale::make(QStringLiteral("INV-%1").arg(number), cashier, nullptr, open);
            sale->setTimestamp(open->openedAt().addSecs(60 * number));
            context.insert(sale);
            const Ref<Payment> payment = Payment::make(PaymentMethodType::cash, 25, 30, 5, {});
            payment->setSale(sale);
            context.insert(payment);
        }
        for (int number = 0; number < 10; ++number) {
            auto movement = std::make_shared<CashMovement>();
            movement->setTillShift(open);
            movement->setAmount(10);
            movement->setTimestamp(open->openedAt().addSecs(600 * number));
            context.insert(movement);
        }
        context.save();
        return file;
    }();
    return path;
}

// What TillView::refresh asks of its view model when the screen is built.
void showTillScreen(ModelContext& context, benchmark::State& state)
{
    TillService till(context);
    AccountsService accounts(context);
    ApprovalService approvals(context);
    SessionStore session;
    TillViewModel model(till, accounts, approvals, context, session);
    const Ref<TillShift> open = model.openShiftShown();
    if (open) {
        benchmark::DoNotOptimize(model.figures(open));
        benchmark::DoNotOptimize(model.movements(open));
    }
    const QList<ShiftHistoryRow> history = model.historyPage();
    if (history.isEmpty() || model.errorMessage())
        state.SkipWithError("no shift history");
    state.counters["open_shift"] = open ? 1 : 0;
    state.counters["history_rows"] = double(history.size());
}

// Each time on a store just opened, as when the program starts on this screen: SQLite's page cache
// is empty, the file the system's.
void firstShowing(benchmark::State& state, const QString& path)
{
    {
        ModelContainer warmUp(path, POSSchema::description()); // the column added since, once
    }
    for (auto _ : state) {
        state.PauseTiming();
        auto container = std::make_unique<ModelContainer>(path, POSSchema::description());
        state.ResumeTiming();
        showTillScreen(container->mainContext(), state);
        state.PauseTiming();
        container.reset();
        state.ResumeTiming();
    }
    ModelContainer container(path, POSSchema::description());
    state.counters["shifts"] = double(container.mainContext().count<TillShift>());
}

void BM_TillScreenFirstShowing(benchmark::State& state)
{
    firstShowing(state, fiveYearStoreCopy());
}
BENCHMARK(BM_TillScreenFirstShowing)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_TillScreenFirstShowingTwoThousandShifts(benchmark::State& state)
{
    firstShowing(state, twoThousandShiftsStore());
}
BENCHMARK(BM_TillScreenFirstShowingTwoThousandShifts)->UseRealTime()->Unit(benchmark::kMillisecond);

// Scrolling the history to its first shift, a page at a time by key.
void historyToTheEnd(benchmark::State& state, const QString& path)
{
    ModelContainer container(path, POSSchema::description());
    ModelContext& context = container.mainContext();
    TillService till(context);
    AccountsService accounts(context);
    ApprovalService approvals(context);
    SessionStore session;
    TillViewModel model(till, accounts, approvals, context, session);
    qint64 pages = 0;
    qint64 rows = 0;
    QElapsedTimer slowest;
    double slowestPage = 0;
    for (auto _ : state) {
        pages = rows = 0;
        std::optional<ShiftHistory::Key> after;
        for (;;) {
            slowest.start();
            const QList<ShiftHistoryRow> page = model.historyPage(after);
            slowestPage = std::max(slowestPage, slowest.nsecsElapsed() / 1e6);
            ++pages;
            rows += page.size();
            if (page.size() < ShiftHistory::pageSize)
                break;
            after = page.last().key;
        }
    }
    state.counters["pages"] = double(pages);
    state.counters["rows"] = double(rows);
    state.counters["slowest_page_ms"] = slowestPage;
}

void BM_TillHistoryToTheEnd(benchmark::State& state)
{
    historyToTheEnd(state, fiveYearStoreCopy());
}
BENCHMARK(BM_TillHistoryToTheEnd)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_TillHistoryToTheEndTwoThousandShifts(benchmark::State& state)
{
    historyToTheEnd(state, twoThousandShiftsStore());
}
BENCHMARK(BM_TillHistoryToTheEndTwoThousandShifts)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
