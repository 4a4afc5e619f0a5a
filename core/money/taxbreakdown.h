#pragma once

#include "money/taxcomponent.h"

#include <QString>

#include <vector>

struct TaxAmount {
    QString label;
    double amount = 0;
};

// The tax block of receipts and reports, itemised by tax.
class TaxBreakdown {
public:
    // The tax of one sold line split over its components, unrounded. Lines sold before components
    // were kept have none; their whole rate then shows as one "Tax (rate)" entry.
    static std::vector<TaxAmount> forLine(const std::vector<TaxComponent>& components, double quantity,
                                          double unitPrice, double lineDiscount, double taxRateSnapshot,
                                          bool pricesIncludeTax);
    // Adds the lines' amounts by label, in order of first appearance, and rounds them to cents so that
    // they add up exactly to total (largest remainder). A negative total, as on a refund, gives
    // negative amounts.
    static std::vector<TaxAmount> combine(const std::vector<std::vector<TaxAmount>>& perItem, double total);
};
