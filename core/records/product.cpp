#include "records/product.h"

#include "money/currency.h"
#include "records/records.h"

TALLY_RECORD_IMPL(Product, TALLY_PRODUCT_FIELDS)

std::vector<TaxComponent> Product::taxComponents() const
{
    if (!isTaxable())
        return {};
    if (const Ref<TaxGroup> group = taxGroup())
        return group->components();
    if (taxRate() > 0)
        return {TaxComponent{QStringLiteral("Tax (%1)").arg(Currency::percentText(taxRate())), taxRate()}};
    return {};
}
