#include "money/taxcalculator.h"

#include "money/rounding.h"

#include <algorithm>

static double netOf(const TaxCalculator::LineInput& line)
{
    return std::max(line.grossAmount - line.lineDiscount, 0.0);
}

CartCalculation TaxCalculator::calculate(const std::vector<LineInput>& lines, double saleDiscount,
                                         bool taxInclusive)
{
    double netSum = 0;
    for (const LineInput& line : lines)
        netSum += netOf(line);
    const double spread = std::min(std::max(saleDiscount, 0.0), netSum);

    CartCalculation result;
    result.lines.reserve(lines.size());
    double grossSum = 0;
    double lineDiscountSum = 0;
    double afterSum = 0;
    double taxSum = 0;
    for (const LineInput& line : lines) {
        const double net = netOf(line);
        double share = 0;
        double after = net;
        if (netSum > 0) {
            share = spread * (net / netSum);
            after = std::max(net - share, 0.0);
        }
        const double rate = line.taxRate;
        const double tax = taxInclusive ? rate * after / (rate + 1) : rate * after;
        const double lineTotal = taxInclusive ? after : after + tax;

        result.lines.push_back({Rounding::toCents(line.grossAmount), Rounding::toCents(line.lineDiscount),
                                Rounding::toCents(share), Rounding::toCents(after), Rounding::toCents(tax),
                                Rounding::toCents(lineTotal)});
        grossSum += line.grossAmount;
        lineDiscountSum += line.lineDiscount;
        afterSum += after;
        taxSum += tax;
    }

    result.subtotal = Rounding::toCents(grossSum);
    result.lineDiscountTotal = Rounding::toCents(lineDiscountSum);
    result.saleDiscount = Rounding::toCents(spread);
    result.pointsDiscount = 0;
    result.taxTotal = Rounding::toCents(taxSum);
    result.total = Rounding::toCents(taxInclusive ? afterSum : afterSum + taxSum);
    return result;
}
