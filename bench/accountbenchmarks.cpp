// Benchmarks of what the Customers and Till screens read: one long account, the aged balances of
// every customer, and the cash a shift should hold.

#include "benchstores.h"

#include "customers/accountsservice.h"
#include "customers/customersviewmodel.h"
#include "startup/sessionstore.h"
#include "records/posschema.h"
#include "records/records.h"
#include "store/modelcontainer.h"
#include "till/tillservice.h"

#include <benchmark/benchmark.h>

#include <QDateTime>

namespace {

constexpr int ledgerEntries = 1000;

// A customer given exactly 1,000 account entries over five years on the store copy: charges from
// sales on account, with a payment received after every third one. Made once per run.
QString longLedgerCustomerId()
{
    static const QString id = [] {
        ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
        ModelContext& context = container.mainContext();
        auto customer = std::make_shared<Customer>();
        customer->setName(QStringLiteral("Long Account Trading"));
        customer->setAllowCredit(true);
        customer->setCreditLimit(1000000);
        context.insert(customer);
        const QDateTime start = QDateTime::currentDateTimeUtc().addYears(-5);
        const qint64 step = start.secsTo(QDateTime::currentDateTimeUtc()) / ledgerEntries;
        for (int i = 0; i < ledgerEntries; ++i) {
            const QDateTime when = start.addSecs(step * i);
            if (i % 4 == 3) {
                auto received = std::make_shared<CustomerPayment>();
                received->setCustomer(customer);
                received->setAmount(150);
                received->setMethodRaw(QStringLiteral("mobileMoney"));
                received->setReference(QStringLiteral("MoMo %1").arg(i));
                received->setTimestamp(when);
                context.insert(received);
                continue;
            }
            auto sale = std::make_shared<Sale>();
            sale->setInvoiceNumber(QStringLiteral("ACC-%1").arg(i, 5, 10, QLatin1Char('0')));
            sale->setTimestamp(when);
            sale->setTotal(60 + i % 90);
            sale->setCustomer(customer);
            context.insert(sale);
            auto payment = std::make_shared<Payment>();
            payment->setSale(sale);
            payment->setMethodRaw(QStringLiteral("onAccount"));
            payment->setAmount(sale->total());
            context.insert(payment);
        }
        context.save();
        return customer->idText();
    }();
    return id;
}

// As the customer's detail reads it: the ledger, then the balance on its own.
void BM_CustomerLedgerAndBalance1000Entries(benchmark::State& state)
{
    const QString id = longLedgerCustomerId();
    ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
    ModelContext& context = container.mainContext();
    AccountsService accounts(context);
    const Ref<Customer> customer = context.find<Customer>(QUuid(id));
    qsizetype entries = 0;
    for (auto _ : state) {
        entries = accounts.ledger(customer).size();
        benchmark::DoNotOptimize(accounts.balance(customer));
    }
    state.counters["entries"] = double(entries);
}
BENCHMARK(BM_CustomerLedgerAndBalance1000Entries)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_AgedBalancesAllCustomers(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    AccountsService accounts(context);
    const QList<Ref<Customer>> customers = context.fetch<Customer>();
    qsizetype owing = 0;
    for (auto _ : state)
        owing = accounts.agedBalances(customers, QDateTime::currentDateTime()).size();
    state.counters["customers"] = double(customers.size());
    state.counters["owing"] = double(owing);
}
BENCHMARK(BM_AgedBalancesAllCustomers)->UseRealTime()->Unit(benchmark::kMillisecond);

// What the Customers screen reads as it opens, and as a search is typed: a page of the list by name
// with what each of its customers owes.
void BM_CustomersListPage(benchmark::State& state, const char* search)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    AccountsService accounts(context);
    SessionStore session;
    CustomersViewModel list(accounts, context, session);
    list.setSearchText(QString::fromUtf8(search));
    qsizetype rows = 0;
    for (auto _ : state)
        rows = list.page().size();
    state.counters["rows"] = double(rows);
}
BENCHMARK_CAPTURE(BM_CustomersListPage, firstPage, "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_CustomersListPage, search, "mensah")->Unit(benchmark::kMillisecond);

// The shift with the most sales; the generated shifts hold about 250 each.
void BM_ExpectedCashOfBusiestShift(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    TillService till(context);
    const QVariant busiest =
        context.scalar(QStringLiteral("SELECT tillShift FROM Sale WHERE tillShift IS NOT "
                                      "NULL GROUP BY tillShift ORDER BY COUNT(*) DESC LIMIT 1"));
    const Ref<TillShift> shift = context.find<TillShift>(QUuid(busiest.toString()));
    if (!shift) {
        state.SkipWithError("the store has no shifts");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(till.expectedCash(shift));
    state.counters["sales"] = double(context.count<Sale>(Sale::Col::tillShift == shift));
}
BENCHMARK(BM_ExpectedCashOfBusiestShift)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
