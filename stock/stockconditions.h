#pragma once

#include "store/query.h"

// The product rules that screens ask of the store in SQL, written once.
namespace StockConditions {

// Mirrors Product::tracksStock: an unknown type counts stock.
Condition tracksStock();
// Counted in stock and at or below its reorder level.
Condition lowStock();

} // namespace StockConditions
