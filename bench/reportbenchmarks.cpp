// The figures of the End of Day report, a year's sales by product and by category, and the daily
// accounting journals, read and worked out on the five-year store as the Reports screen will.

#include "benchstores.h"

#include "records/posschema.h"
#include "reports/accountingexportservice.h"
#include "reports/reportcalculator.h"
#include "reports/salesreader.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <QHash>
#include <QTemporaryDir>

#include <cmath>

namespace {

// The five-year store, opened as the program opens it.
struct OpenStore {
    ModelContainer container{fiveYearStorePath(), POSSchema::description()};
    ModelContext& context = container.mainContext();
};

// The day with the most sales, in the local calendar.
QDate busiestDay(ModelContext& context)
{
    return QDate::fromString(
        context
            .scalar(QStringLiteral("SELECT date(\"timestamp\", 'unixepoch', 'localtime') AS day "
                                   "FROM \"Sale\" GROUP BY day ORDER BY COUNT(*) DESC LIMIT 1"))
            .toString(),
        Qt::ISODate);
}

// The last whole calendar year of the store.
DayRange lastFullYear(ModelContext& context)
{
    const int year = Record::dateFromSeconds(
                         context.scalar(QStringLiteral("SELECT MAX(\"timestamp\") FROM \"Sale\"")).toDouble())
                         .date()
                         .year() -
                     1;
    return DayRange(QDate(year, 1, 1), QDate(year, 12, 31));
}

void countSales(benchmark::State& state, const QList<ReportSale>& sales)
{
    qsizetype lines = 0;
    for (const ReportSale& sale : sales)
        lines += sale.items.size();
    state.counters["sales"] = double(sales.size());
    state.counters["lines"] = double(lines);
}

void BM_EndOfDayBusiestDay(benchmark::State& state)
{
    OpenStore store;
    ModelContext& context = store.context;
    const QDate day = busiestDay(context);
    SalesReader reader(context);
    QList<ReportSale> sales;
    for (auto _ : state) {
        sales = reader.sales(DayRange(day));
        benchmark::DoNotOptimize(ReportCalculator::dailySales(sales, day));
        benchmark::DoNotOptimize(ReportCalculator::voids(sales, day));
        benchmark::DoNotOptimize(ReportCalculator::taxReport(sales));
        benchmark::DoNotOptimize(ReportCalculator::taxByTax(sales));
        benchmark::DoNotOptimize(ReportCalculator::paymentMethodTotals(sales));
        benchmark::DoNotOptimize(ReportCalculator::salesByCashier(sales));
        benchmark::DoNotOptimize(ReportCalculator::salesByProduct(sales));
    }
    countSales(state, sales);
}
BENCHMARK(BM_EndOfDayBusiestDay)->UseRealTime()->Unit(benchmark::kMillisecond);

struct YearFigures {
    QList<ProductSalesRow> products;
    QList<CategorySalesRow> categories;
};

YearFigures yearThroughCalculator(SalesReader& reader, const DayRange& year,
                                  QList<ReportSale>* read = nullptr)
{
    const QList<ReportSale> sales = reader.sales(year, {.items = true, .payments = false});
    if (read)
        *read = sales;
    return {ReportCalculator::salesByProduct(sales), ReportCalculator::salesByCategory(sales)};
}

// The same figures as a hand-written GROUP BY would give them, each revenue by its own formula.
YearFigures yearInSQL(ModelContext& context, const DayRange& year)
{
    const QString net = QStringLiteral("(i.\"unitPrice\" * i.\"quantity\" - i.\"lineDiscount\")");
    const QString rate = QStringLiteral("i.\"taxRateSnapshot\"");
    const QString inclusiveTax = QStringLiteral("%1 * %2 / (%2 + 1)").arg(net, rate);
    const QString exclusiveTax = QStringLiteral("%1 * %2").arg(net, rate);
    const QString revenue =
        QStringLiteral("CASE WHEN i.\"pricesIncludeTax\" THEN %1 - %2 ELSE (%1 + %3) - %3 END")
            .arg(net, inclusiveTax, exclusiveTax);
    const QString counted = QStringLiteral(
        " FROM \"Sale\" s CROSS JOIN \"SaleItem\" i ON i.\"sale\" = s.\"id\" WHERE s.\"timestamp\" >= ? "
        "AND s.\"timestamp\" < ? AND s.\"statusRaw\" != 'voided'");
    const QVariantList bounds{year.startSeconds(), year.endSeconds()};

    YearFigures figures;
    figures.products = context.rows<ProductSalesRow>(
        QStringLiteral("SELECT i.\"product\", SUM(i.\"quantity\"), SUM(%1), SUM(i.\"unitCostSnapshot\" * "
                       "i.\"quantity\")")
                .arg(revenue) +
            counted + QStringLiteral(" AND i.\"product\" IS NOT NULL GROUP BY i.\"product\""),
        bounds, [](const SqliteStatement& row) {
            ProductSalesRow made;
            made.id = QUuid::fromString(row.text(0));
            made.quantitySold = row.real(1);
            made.revenue = row.real(2);
            made.cost = row.real(3);
            made.profit = made.revenue - made.cost;
            return made;
        });
    figures.categories = context.rows<CategorySalesRow>(
        QStringLiteral(
            "SELECT COALESCE(c.\"name\", 'Uncategorized') AS category, SUM(i.\"quantity\"), SUM(%1)")
                .arg(revenue) +
            QStringLiteral(
                " FROM \"Sale\" s CROSS JOIN \"SaleItem\" i ON i.\"sale\" = s.\"id\" LEFT JOIN "
                "\"Product\" p ON p.\"id\" = i.\"product\" LEFT JOIN \"Category\" c ON c.\"id\" = "
                "p.\"category\" WHERE s.\"timestamp\" >= ? AND s.\"timestamp\" < ? AND s.\"statusRaw\" "
                "!= 'voided' GROUP BY category"),
        bounds, [](const SqliteStatement& row) {
            return CategorySalesRow{row.text(0), row.real(1), row.real(2)};
        });
    return figures;
}

// The two ways add in different orders, so they agree to rounding, not to the last bit.
bool agree(double a, double b)
{
    return std::abs(a - b) <= 1e-6 * std::max(1.0, std::abs(a));
}

bool sameFigures(const YearFigures& calculated, const YearFigures& inSQL)
{
    if (calculated.products.size() != inSQL.products.size() ||
        calculated.categories.size() != inSQL.categories.size())
        return false;
    QHash<QUuid, ProductSalesRow> products;
    for (const ProductSalesRow& row : inSQL.products)
        products.insert(row.id, row);
    for (const ProductSalesRow& row : calculated.products) {
        const ProductSalesRow other = products.value(row.id);
        if (!agree(row.quantitySold, other.quantitySold) || !agree(row.revenue, other.revenue) ||
            !agree(row.cost, other.cost))
            return false;
    }
    QHash<QString, CategorySalesRow> categories;
    for (const CategorySalesRow& row : inSQL.categories)
        categories.insert(row.categoryName, row);
    for (const CategorySalesRow& row : calculated.categories) {
        const CategorySalesRow other = categories.value(row.categoryName);
        if (!agree(row.quantitySold, other.quantitySold) || !agree(row.revenue, other.revenue))
            return false;
    }
    return true;
}

void BM_YearByProductAndCategory(benchmark::State& state)
{
    OpenStore store;
    ModelContext& context = store.context;
    const DayRange year = lastFullYear(context);
    SalesReader reader(context);
    QList<ReportSale> read;
    if (!sameFigures(yearThroughCalculator(reader, year, &read), yearInSQL(context, year))) {
        state.SkipWithError("the calculator and the GROUP BY disagree");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(yearThroughCalculator(reader, year));
    countSales(state, read);
}
BENCHMARK(BM_YearByProductAndCategory)->UseRealTime()->Unit(benchmark::kMillisecond);

// What the same two tables cost as GROUP BY queries, for comparison.
void BM_YearByProductAndCategoryInSQL(benchmark::State& state)
{
    OpenStore store;
    ModelContext& context = store.context;
    const DayRange year = lastFullYear(context);
    for (auto _ : state)
        benchmark::DoNotOptimize(yearInSQL(context, year));
}
BENCHMARK(BM_YearByProductAndCategoryInSQL)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_OneDaysJournal(benchmark::State& state)
{
    OpenStore store;
    ModelContext& context = store.context;
    const QDate day = busiestDay(context);
    AccountingExportService service(context);
    for (auto _ : state)
        benchmark::DoNotOptimize(service.dailyJournals(day, day));
}
BENCHMARK(BM_OneDaysJournal)->UseRealTime()->Unit(benchmark::kMillisecond);

// The busiest month, one QuickBooks file a day.
void BM_MonthOfDailyFiles(benchmark::State& state)
{
    OpenStore store;
    ModelContext& context = store.context;
    const QDate day = busiestDay(context);
    const QDate first(day.year(), day.month(), 1);
    AccountingExportService service(context);
    QTemporaryDir folder;
    qsizetype files = 0;
    for (auto _ : state) {
        const QList<Journal> journals = service.dailyJournals(first, first.addMonths(1).addDays(-1));
        files = AccountingExportService::writeDailyFiles(journals, AccountingFormat::quickBooks, {},
                                                         folder.path())
                    .size();
    }
    state.counters["files"] = double(files);
}
BENCHMARK(BM_MonthOfDailyFiles)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
