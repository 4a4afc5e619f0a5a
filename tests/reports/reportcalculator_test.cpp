#include "reports/reportcalculator.h"

#include "records/category.h"
#include "records/user.h"
#include "reportbuilders.h"

#include <gtest/gtest.h>

namespace {
const QString refunded = QStringLiteral("refunded");
const QString voided = QStringLiteral("voided");

// The three taxes on a net of 10.
Line taxedSoap(const std::shared_ptr<const ReportProduct>& soap, double quantity = 1)
{
    return {.product = soap, .quantity = quantity, .unitPrice = 10, .unitCost = 6, .taxRate = 0.2,
            .taxComponentsRaw = ghanaTaxes()};
}

template <class Row> QStringList column(const QList<Row>& rows, QString Row::*field)
{
    QStringList result;
    for (const Row& row : rows)
        result << row.*field;
    return result;
}

// Shortest text that reads back as the same double, so comparing texts is comparing values.
QString exact(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// Every figure of every sales report, in one list, so that one report forgetting a rule shows.
std::vector<double> everyFigure(const QList<ReportSale>& sales, QDate day)
{
    const DailySalesSummary daily = ReportCalculator::dailySales(sales, day);
    const ProductSalesRow product = ReportCalculator::salesByProduct(sales).value(0);
    const TaxSummary tax = ReportCalculator::taxReport(sales);
    std::vector<double> figures{double(daily.transactionCount), daily.grossSales, daily.tax, daily.netTotal,
                                daily.averageBasket, product.quantitySold, product.revenue, product.cost,
                                ReportCalculator::salesByCategory(sales).value(0).revenue,
                                ReportCalculator::salesByType(sales).value(0).quantitySold,
                                ReportCalculator::grossProfit(sales), tax.salesBeforeTax, tax.taxCollected};
    for (const CashierSalesRow& row : ReportCalculator::salesByCashier(sales))
        figures.insert(figures.end(), {double(row.transactionCount), row.total});
    for (const PaymentMethodRow& row : ReportCalculator::paymentMethodTotals(sales))
        figures.insert(figures.end(), {double(row.count), row.total});
    return figures;
}
} // namespace

TEST(ReportCalculator, AVoidedSaleCountsInNoFigureButTheVoidsOfTheDayItWasVoided)
{
    const auto ama = cashier(QStringLiteral("Ama"));
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {{.product = soap, .unitPrice = 20}}, .cashier = ama}),
        // Rung up late on the 9th, voided the next morning.
        sale({.when = at(9, 20), .lines = {taxedSoap(soap)}, .statusRaw = voided, .voidedAt = at(10, 8),
              .cashier = ama}),
        // An old row without voidedAt counts on the day it was rung up.
        sale({.when = at(9, 11), .lines = {{.unitPrice = 3}}, .statusRaw = voided, .cashier = ama}),
    };
    EXPECT_EQ(ReportCalculator::voids(sales, march(9)).count, 1);
    EXPECT_DOUBLE_EQ(ReportCalculator::voids(sales, march(9)).total, 3);
    EXPECT_EQ(ReportCalculator::voids(sales, march(10)).count, 1);
    EXPECT_DOUBLE_EQ(ReportCalculator::voids(sales, march(10)).total, 12);

    EXPECT_EQ(ReportCalculator::counted(sales).size(), 1);
    EXPECT_EQ(everyFigure(sales, march(9)),
              (std::vector<double>{1, 20, 0, 20, 20, 1, 20, 0, 20, 1, 20, 20, 0, 1, 20, 1, 20}));
    EXPECT_EQ(ReportCalculator::dailySales(sales, march(10)).transactionCount, 0);
    EXPECT_EQ(column(ReportCalculator::taxByTax(sales), &TaxByTaxRow::label), QStringList{"Not taxable"});
}

TEST(ReportCalculator, ARefundNetsOutOfEveryFigureButRaisesNoTransactionCountEvenAlone)
{
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {taxedSoap(soap, 2)}, .cashier = cashier(QStringLiteral("Kofi"))}),
        // One of the two comes back, refunded by another cashier.
        sale({.when = at(9, 15), .lines = {taxedSoap(soap, -1)}, .statusRaw = refunded,
              .cashier = cashier(QStringLiteral("Ama"))}),
    };
    // Kofi 1 sale of 24, Ama none and -12; the refund's negative payment counts as a payment.
    EXPECT_EQ(everyFigure(sales, march(9)),
              (std::vector<double>{1, 10, 2, 12, 12, 1, 10, 6, 10, 1, 4, 10, 2, 1, 24, 0, -12, 2, 12}));
    EXPECT_EQ(column(ReportCalculator::salesByCashier(sales), &CashierSalesRow::cashierName),
              (QStringList{"Kofi", "Ama"}));
    const QList<TaxByTaxRow> taxes = ReportCalculator::taxByTax(sales);
    ASSERT_EQ(taxes.size(), 3);
    EXPECT_EQ(taxes[2].taxable, 10);
    EXPECT_EQ(taxes[2].tax, 1.5);

    // A day of refunds only: no basket to divide by.
    const DailySalesSummary refundsOnly = ReportCalculator::dailySales(sales.mid(1), march(9));
    EXPECT_EQ((std::vector<double>{double(refundsOnly.transactionCount), refundsOnly.averageBasket,
                                   refundsOnly.grossSales, refundsOnly.tax, refundsOnly.netTotal}),
              (std::vector<double>{0, 0, -10, -2, -12}));
}

TEST(ReportCalculator, DailyFiguresAreRoundedOnceOnTheSumAndDiscountsAddAllThree)
{
    QList<ReportSale> sales;
    for (const QDateTime& when : {at(9, 0), at(9, 12), QDateTime(march(9), QTime(23, 59, 59, 999)), at(10, 0)}) {
        ReportSale third = sale({.when = when});
        third.subtotal = 0.333;
        third.lineDiscountTotal = 0.111;
        third.taxTotal = 0.002;
        third.total = 10.0 / 3;
        sales << third;
    }
    const DailySalesSummary day = ReportCalculator::dailySales(sales, march(9));
    EXPECT_EQ(day.date, march(9).startOfDay());
    // Rounded sale by sale these would be 0.99, 0.33, 0.00 and 9.99.
    EXPECT_EQ((std::vector<double>{double(day.transactionCount), day.grossSales, day.discounts, day.tax,
                                   day.netTotal, day.averageBasket}),
              (std::vector<double>{3, 1.0, 0.33, 0.01, 10, 3.33}));

    ReportSale discounted = sale({.lines = {{.unitPrice = 50, .lineDiscount = 1.5}}});
    discounted.saleDiscount = 2;
    discounted.pointsDiscount = 5;
    EXPECT_EQ(ReportCalculator::dailySales({discounted}, march(9)).discounts, 8.5);
    EXPECT_EQ(ReportCalculator::taxReport({discounted}).salesBeforeTax, 41.5);
}

TEST(ReportCalculator, ALineWhoseProductWasDeletedCountsByCategoryAndTypeButNotByProduct)
{
    const QList<ReportSale> sales{sale({.lines = {
                                            {.product = nullptr, .unitPrice = 7, .typeRaw = "service"},
                                            {.product = product("Loose Rice", std::nullopt), .unitPrice = 4},
                                        }})};
    EXPECT_EQ(column(ReportCalculator::salesByProduct(sales), &ProductSalesRow::productName),
              QStringList{"Loose Rice"});
    // Without a product, and with a product without a category, both land under one name.
    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 1);
    EXPECT_EQ(categories[0].categoryName, QStringLiteral("Uncategorized"));
    EXPECT_EQ(categories[0].quantitySold, 2);
    EXPECT_EQ(categories[0].revenue, 11);
    EXPECT_EQ(ReportCalculator::salesByType(sales).value(1).revenue, 7);
}

TEST(ReportCalculator, CategoryRevenueTakesTheTaxOutOfTheNetOfEachLine)
{
    const QList<ReportSale> sales{
        // 115 with the tax in it, 11.50 off: a net of 103.50 holding 13.50 tax.
        sale({.lines = {{.product = product("Malta", "Drinks"), .unitPrice = 115, .taxRate = 0.15,
                         .lineDiscount = 11.5, .pricesIncludeTax = true}}}),
        // 100 before tax, 10 off: 90 and 13.50 tax on top.
        sale({.lines = {{.product = product("Rice", "Grains"), .quantity = 2, .unitPrice = 50, .taxRate = 0.15,
                         .lineDiscount = 10}}}),
    };
    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 2);
    EXPECT_DOUBLE_EQ(categories[0].revenue, 90);
    EXPECT_DOUBLE_EQ(categories[1].revenue, 90);
    EXPECT_EQ(categories[1].quantitySold, 2);
}

TEST(ReportCalculator, TaxesComeInOrderOfFirstAppearanceEachCountingTheWholeNet)
{
    const QList<ReportSale> sales{
        sale({.lines = {{.unitPrice = 10, .taxRate = 0.15}}}), // kept before taxes were itemised
        sale({.lines = {taxedSoap(product("Soap")), {.unitPrice = 4}}}),
    };
    QStringList rows;
    for (const TaxByTaxRow& row : ReportCalculator::taxByTax(sales))
        rows << row.label + u' ' + exact(row.taxable) + u' ' + exact(row.tax);
    EXPECT_EQ(rows, (QStringList{"Tax (15%) 10 1.5", "NHIL 10 0.25", "GETFund Levy 10 0.25", "VAT 10 1.5",
                                 "Not taxable 4 0"}));
}

TEST(ReportCalculator, UntaxedSalesOfHalfACentOrLessMakeNoRow)
{
    const struct {
        const char* name;
        double untaxed;
        QStringList rows;
    } cases[] = {
        {"exactly half a cent", 0.005, {}},
        {"just over half a cent", 0.0051, {"Not taxable 0.01"}},
        {"a refund's negative half cent and more", -0.006, {"Not taxable -0.01"}},
        {"nothing", 0, {}},
    };
    for (const auto& test : cases) {
        QStringList rows;
        for (const TaxByTaxRow& row : ReportCalculator::taxByTax({sale({.lines = {{.unitPrice = test.untaxed}}})}))
            rows << row.label + u' ' + exact(row.taxable);
        EXPECT_EQ(rows, test.rows) << test.name;
    }
}
