#include "money/taxcalculator.h"

#include <gtest/gtest.h>

using Line = TaxCalculator::LineInput;

static void expectLine(const LineCalculation& line, double share, double taxable, double tax, double total)
{
    EXPECT_EQ(line.saleDiscountShare, share);
    EXPECT_EQ(line.taxableAmount, taxable);
    EXPECT_EQ(line.taxAmount, tax);
    EXPECT_EQ(line.lineTotal, total);
}

TEST(TaxCalculator, SpreadsSaleDiscountOverNetAmountsBeforeTaxAndNeverBelowZero)
{
    const std::vector<Line> lines{{100, 0, 0.2}, {50, 10, 0}};

    const CartCalculation exclusive = TaxCalculator::calculate(lines, 14, false);
    ASSERT_EQ(exclusive.lines.size(), 2u);
    expectLine(exclusive.lines[0], 10, 90, 18, 108);
    expectLine(exclusive.lines[1], 4, 36, 0, 36);
    EXPECT_EQ(exclusive.subtotal, 150);
    EXPECT_EQ(exclusive.lineDiscountTotal, 10);
    EXPECT_EQ(exclusive.saleDiscount, 14);
    EXPECT_EQ(exclusive.taxTotal, 18);
    EXPECT_EQ(exclusive.total, 144);

    // Inclusive prices already hold the tax: it is taken out of the line, not added on top.
    const CartCalculation inclusive = TaxCalculator::calculate(lines, 14, true);
    expectLine(inclusive.lines[0], 10, 90, 15, 90);
    expectLine(inclusive.lines[1], 4, 36, 0, 36);
    EXPECT_EQ(inclusive.taxTotal, 15);
    EXPECT_EQ(inclusive.total, 126);

    const CartCalculation result = TaxCalculator::calculate({{10, 15, 0.1}, {20, 0, 0.1}}, 5, false);
    EXPECT_EQ(result.lineDiscountTotal, 15);
    // The whole sale discount lands on the only line with something left.
    expectLine(result.lines[0], 0, 0, 0, 0);
    expectLine(result.lines[1], 5, 15, 1.5, 16.5);
    EXPECT_EQ(result.total, 16.5);
}

TEST(TaxCalculator, SaleDiscountIsLimitedToWhatTheLinesAreWorth)
{
    const struct {
        const char* name;
        std::vector<Line> lines;
        double asked, saleDiscount, taxTotal, total;
    } cases[] = {
        {"discount above the lines", {{100, 0, 0.2}, {50, 10, 0}}, 500, 140, 0, 0},
        {"negative discount", {{100, 0, 0.2}}, -5, 0, 20, 120},
        {"all lines at net zero", {{10, 10, 0.2}, {0, 0, 0}}, 7, 0, 0, 0},
        {"empty cart", {}, 10, 0, 0, 0},
    };
    for (const auto& c : cases) {
        const CartCalculation result = TaxCalculator::calculate(c.lines, c.asked, false);
        EXPECT_EQ(result.saleDiscount, c.saleDiscount) << c.name;
        EXPECT_EQ(result.total, c.total) << c.name;
        EXPECT_EQ(result.taxTotal, c.taxTotal) << c.name;
    }
}

TEST(TaxCalculator, TotalsRoundTheSumsNotTheRoundedLines)
{
    const CartCalculation result =
        TaxCalculator::calculate({{0.333, 0, 0}, {0.333, 0, 0}, {0.333, 0, 0}}, 0, false);
    for (const LineCalculation& line : result.lines)
        EXPECT_EQ(line.lineTotal, 0.33);
    EXPECT_EQ(result.subtotal, 1.0);
    EXPECT_EQ(result.total, 1.0);
}
