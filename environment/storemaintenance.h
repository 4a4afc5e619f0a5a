#pragma once

#include "store/modelcontext.h"

// The one-time repairs and seeding of a store, run at every start before any service is built.
// Each repair is guarded by a marker of AppSettings that is set in the same save as the repair, so
// a repair that fails is simply tried again at the next start.
class StoreMaintenance {
public:
    // Never throws and never reports: a store whose repairs fail still opens.
    static void run(ModelContext& context);
    // Marks the lines of sales from before SaleItem.pricesIncludeTax existed as tax-inclusive when
    // the sale's own figures show the tax was inside the prices. Refunds keep the mode they were
    // written with. Doesn't save.
    static void backfillTaxInclusiveSaleItems(ModelContext& context);
};
