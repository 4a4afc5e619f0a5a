#pragma once

#include "store/modelcontext.h"

#include <QString>

#include <optional>

// The one-time repairs and seeding of a store, run at every start before any service is built.
// Each repair is guarded by a marker of AppSettings that is set in the same save as the repair, so
// a repair that fails is simply tried again at the next start.
class StoreMaintenance {
public:
    // One unit of work. Never throws: a store whose repairs fail still opens, and the failure
    // comes back as the message to show, with nothing of the repairs left in memory.
    static std::optional<QString> run(ModelContext& context);
    // Marks the lines of sales from before SaleItem.pricesIncludeTax existed as tax-inclusive when
    // the sale's own figures show the tax was inside the prices. Refunds keep the mode they were
    // written with. Doesn't save.
    static void backfillTaxInclusiveSaleItems(ModelContext& context);
};
