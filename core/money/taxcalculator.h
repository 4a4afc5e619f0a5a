#pragma once

#include <vector>

// One priced line of a cart; every field is rounded to cents.
struct LineCalculation {
    double grossAmount = 0;
    double lineDiscount = 0;
    double saleDiscountShare = 0;
    // After both discounts, floored at 0; in inclusive pricing it still holds the tax.
    double taxableAmount = 0;
    double taxAmount = 0;
    double lineTotal = 0;
};

// The totals are rounded from unrounded sums, so they need not equal the sums of the rounded lines.
struct CartCalculation {
    std::vector<LineCalculation> lines;
    double subtotal = 0;
    double lineDiscountTotal = 0;
    double saleDiscount = 0;
    double pointsDiscount = 0;
    double taxTotal = 0;
    // The amount payable.
    double total = 0;
};

class TaxCalculator {
public:
    struct LineInput {
        // Price times quantity, not rounded.
        double grossAmount = 0;
        double lineDiscount = 0;
        double taxRate = 0;
    };

    // Spreads saleDiscount (points value included) over the lines in proportion to what each line is
    // worth after its own discount, then taxes each line at its single rate. Runs on every cart change.
    static CartCalculation calculate(const std::vector<LineInput>& lines, double saleDiscount,
                                     bool taxInclusive);
};
