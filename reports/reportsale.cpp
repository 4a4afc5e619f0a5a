#include "reports/reportsale.h"

#include "money/taxcomponent.h"
#include "records/enums.h"

std::vector<TaxAmount> ReportItem::taxBreakdown() const
{
    return TaxBreakdown::forLine(TaxComponent::decode(taxComponentsRaw), quantity, unitPrice, lineDiscount,
                                 taxRateSnapshot, pricesIncludeTax);
}

bool ReportSale::isVoided() const
{
    return SaleStatuses::fromRaw(statusRaw) == SaleStatus::voided;
}
