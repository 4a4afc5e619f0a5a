#include "stock/stockconditions.h"

#include "records/enums.h"

Condition StockConditions::tracksStock()
{
    return Condition(QStringLiteral("\"productTypeRaw\" NOT IN (?, ?)"),
                     {ProductTypes::raw(ProductType::nonInventory), ProductTypes::raw(ProductType::service)});
}

Condition StockConditions::lowStock()
{
    return tracksStock() && Condition(QStringLiteral("\"stockQuantity\" <= \"reorderLevel\""), {});
}
