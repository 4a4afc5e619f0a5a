#pragma once

#include "records/saleitem.h"

// One line of the original sale and how much of it comes back.
struct RefundEntry {
    Ref<SaleItem> item;
    double quantity = 0;
};

// What a returned quantity is worth, before any rounding: the amount net of its discount and the
// tax in it (prices with tax) or on it (prices without).
struct RefundParts {
    double taxable = 0;
    double tax = 0;
};
