#include "records/saleitem.h"

#include "records/records.h"

TALLY_RECORD_IMPL(SaleItem, TALLY_SALE_ITEM_FIELDS)

Ref<SaleItem> SaleItem::make(const Ref<Product>& product, double quantity, double unitPrice,
                             double unitCostSnapshot, double taxRateSnapshot, double lineDiscount,
                             bool pricesIncludeTax)
{
    auto item = std::make_shared<SaleItem>();
    item->setProduct(product);
    item->setQuantity(quantity);
    item->setUnitPrice(unitPrice);
    item->setUnitCostSnapshot(unitCostSnapshot);
    item->setTaxRateSnapshot(taxRateSnapshot);
    item->setLineDiscount(lineDiscount);
    item->setPricesIncludeTax(pricesIncludeTax);
    item->setTaxComponentsRaw(
        TaxComponent::encode(product ? product->taxComponents() : std::vector<TaxComponent>{}));
    if (product) {
        item->setProductNameSnapshot(product->name());
        item->setSkuSnapshot(product->sku());
        item->setProductTypeRaw(product->productTypeRaw());
        item->setSellingUnitRaw(product->sellingUnitRaw());
    }
    return item;
}

double SaleItem::taxAmount() const
{
    return amounts().tax();
}

double SaleItem::lineTotal() const
{
    return amounts().total();
}

LineAmounts SaleItem::amounts() const
{
    return {grossAmount(), lineDiscount(), taxRateSnapshot(), pricesIncludeTax()};
}

// Earned on what the line brought in net of tax and of every discount.
double SaleItem::commission() const
{
    return staffID() ? (lineTotal() - taxAmount()) * commissionRate() : 0;
}

std::vector<TaxAmount> SaleItem::taxBreakdown() const
{
    return TaxBreakdown::forLine(TaxComponent::decode(taxComponentsRaw()), quantity(), unitPrice(),
                                 lineDiscount(), taxRateSnapshot(), pricesIncludeTax());
}
