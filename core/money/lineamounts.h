#pragma once

// What one sold line comes to, from the figures a SaleItem keeps; nothing is rounded. Shared by the
// record and by the reports, which read lines without making records, so both add the same doubles.
struct LineAmounts {
    double grossAmount = 0; // unit price times quantity
    double lineDiscount = 0;
    double taxRate = 0;
    bool pricesIncludeTax = false;

    double net() const { return grossAmount - lineDiscount; }
    double tax() const { return pricesIncludeTax ? net() * taxRate / (taxRate + 1) : net() * taxRate; }
    double total() const { return pricesIncludeTax ? net() : net() + tax(); }
};
