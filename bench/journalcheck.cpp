// tallyrun_journal_check <path>: builds the accounting journal of every day of a store and checks that
// each balances to the cent, that its takings are the day's payments and that its Sales line differs
// from the day's sales by the rounding it reports, and no more. Prints the largest rounding seen.

#include "clock/clock.h"
#include "money/rounding.h"
#include "records/posschema.h"
#include "reports/accountingexportservice.h"
#include "reports/reportcalculator.h"
#include "reports/salesreader.h"
#include "store/modelcontainer.h"

#include <QHash>

#include <cmath>
#include <cstdio>
#include <exception>

namespace {
int failures = 0;

void expect(bool ok, const Journal& journal, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "FAILED: %s: %s\n", qPrintable(journal.number), what);
        ++failures;
    }
}

QDate localDay(ModelContext& context, const char* sql)
{
    return Record::dateFromSeconds(context.scalar(QString::fromUtf8(sql)).toDouble()).date();
}

// The day's sales before tax and discounts, and the discounts in them, worked out here on their own.
struct DaySales {
    double beforeTaxAndDiscounts = 0;
    double discounts = 0;
    qsizetype items = 0;
};

DaySales daySalesOf(const QList<ReportSale>& sales)
{
    DaySales day;
    for (const ReportSale& sale : sales) {
        for (const ReportItem& item : sale.items) {
            const double rate = item.taxRateSnapshot;
            const double discount =
                item.pricesIncludeTax && rate > 0 ? item.lineDiscount / (1 + rate) : item.lineDiscount;
            day.discounts += discount;
            day.beforeTaxAndDiscounts += discount + (item.lineTotal() - item.taxAmount());
            ++day.items;
        }
    }
    return day;
}

struct Totals {
    qint64 journals = 0;
    qint64 withRounding = 0;
    // The largest roundingAdjustment, and the largest once a refunded discount is set aside.
    double largestRounding = 0;
    QString largestRoundingDay;
    double largestPureRounding = 0;
    QString largestPureRoundingDay;
    qint64 discountsInSales = 0;
    qint64 refunds = 0;
    qint64 voids = 0;
};

void keepLargest(double value, const Journal& journal, double& largest, QString& day)
{
    if (std::abs(value) > std::abs(largest)) {
        largest = value;
        day = journal.date.toString(QStringLiteral("yyyy-MM-dd"));
    }
}

void checkDay(const Journal& journal, const QList<ReportSale>& daySales, Totals& totals)
{
    expect(journal.isBalanced() && journal.totalDebit() == journal.totalCredit(), journal,
           "debits equal credits to the cent");

    double takings = 0;
    double paid = 0;
    double salesLine = 0;
    double signedSum = 0;
    for (const JournalLine& line : journal.lines) {
        expect((line.debit > 0) != (line.credit > 0), journal, "a line is a debit or a credit");
        const double amount = line.debit - line.credit;
        signedSum += amount;
        if (line.account == LedgerAccount::sales)
            salesLine = amount;
        if (line.description.endsWith(QStringLiteral(" takings")) ||
            line.description == QStringLiteral("Credit sales (On Account)"))
            takings += amount;
    }
    for (const ReportSale& sale : daySales) {
        for (const ReportPayment& payment : sale.payments)
            paid += payment.amount;
    }
    expect(std::abs(signedSum) < 0.005, journal, "the lines add up to nothing");
    // One rounding per method posted.
    expect(std::abs(takings - paid) <= 0.025, journal, "the takings are the day's payments");

    const DaySales day = daySalesOf(daySales);
    const double rounding = Rounding::toCents(-Rounding::toCents(day.beforeTaxAndDiscounts) - salesLine);
    expect(journal.roundingAdjustment == rounding, journal,
           "the rounding is the Sales line less the day's sales");

    // Only discounts above nothing are posted, so on a day when refunds gave back more discount than
    // sales gave, the Sales line takes the difference up and the rounding shows it too.
    const double discountInSales = day.discounts > 0.0001 ? 0 : day.discounts;
    const double pureRounding = rounding + discountInSales;
    // Each sale's total, each sold line's discount (with its tax) and each journal line are rounded
    // once; the Sales line can't gather more than that.
    const double allowance =
        0.005 * double(daySales.size()) + 0.006 * double(day.items) + 0.005 * double(journal.lines.size());
    expect(std::abs(pureRounding) <= allowance, journal,
           "the rounding is no more than the roundings behind it");

    ++totals.journals;
    totals.withRounding += rounding != 0 ? 1 : 0;
    totals.discountsInSales += discountInSales != 0 ? 1 : 0;
    keepLargest(rounding, journal, totals.largestRounding, totals.largestRoundingDay);
    keepLargest(pureRounding, journal, totals.largestPureRounding, totals.largestPureRoundingDay);
}
} // namespace

int main(int argc, char** argv)
{
    Clock::readLocalZoneOnce();
    if (argc != 2) {
        std::fprintf(stderr, "usage: tallyrun_journal_check <path>\n");
        return 2;
    }
    try {
        ModelContainer container(QString::fromLocal8Bit(argv[1]), POSSchema::description());
        ModelContext& context = container.mainContext();
        const QDate first = localDay(context, "SELECT MIN(timestamp) FROM Sale");
        const QDate last = localDay(context, "SELECT MAX(timestamp) FROM Sale");
        SalesReader reader(context);
        Totals totals;
        // A month at a time keeps memory small on a five-year store.
        for (QDate month(first.year(), first.month(), 1); month <= last; month = month.addMonths(1)) {
            const DayRange range(month, month.addMonths(1).addDays(-1));
            const QList<ReportSale> sales = reader.sales(range);
            const QList<ReportAccountPayment> payments = reader.accountPayments(range);
            QHash<QDate, QList<ReportSale>> byDay;
            for (const ReportSale& sale : sales) {
                if (sale.isVoided()) {
                    totals.voids += range.contains(sale.timestamp) ? 1 : 0;
                    continue;
                }
                byDay[sale.timestamp.toLocalTime().date()].append(sale);
                totals.refunds += sale.isRefund ? 1 : 0;
            }
            for (const Journal& journal :
                 AccountingExportService::journals(sales, payments, month, month.addMonths(1).addDays(-1)))
                checkDay(journal, byDay.value(journal.date.date()), totals);
        }
        std::printf("%lld journals from %s to %s over %lld refunds and %lld voids\n"
                    "%lld carry rounding in Sales, the largest %.2f on %s\n"
                    "%lld had refunds give back more discount than sales gave, which Sales takes up; "
                    "set that aside, the largest rounding is %.2f on %s\n",
                    (long long)totals.journals, qPrintable(first.toString(Qt::ISODate)),
                    qPrintable(last.toString(Qt::ISODate)), (long long)totals.refunds,
                    (long long)totals.voids, (long long)totals.withRounding, totals.largestRounding,
                    qPrintable(totals.largestRoundingDay), (long long)totals.discountsInSales,
                    totals.largestPureRounding, qPrintable(totals.largestPureRoundingDay));
        expect(totals.journals > 0, Journal{}, "there are journals");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FAILED: %s\n", error.what());
        return 1;
    }
    if (failures == 0)
        std::printf("every journal balances\n");
    return failures == 0 ? 0 : 1;
}
