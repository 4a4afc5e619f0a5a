#include "environment/storemaintenance.h"

#include "customers/loyaltyservice.h"
#include "money/taxsetup.h"
#include "records/appsettings.h"
#include "records/product.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "store/storeerror.h"

namespace {

// A sale whose total is its net within this was priced with the tax inside; a sale with tax on top
// differs by the whole tax.
constexpr double inclusiveTotalTolerance = 0.011;
// Sales with less tax than this had none to place.
constexpr double noTax = 0.005;

QList<Ref<Product>> serviceProductsOrNone(ModelContext& context)
{
    try {
        return context.fetch<Product>(
            FetchDescriptor(Product::Col::productTypeRaw == QStringLiteral("service")));
    } catch (const StoreError&) {
        return {};
    }
}

} // namespace

void StoreMaintenance::run(ModelContext& context)
{
    try {
        // On a new store there is nothing to repair; its settings and taxes come later.
        const Ref<AppSettings> settings = context.fetchFirst<AppSettings>();
        if (!settings)
            return;

        if (!settings->saleItemTaxModeBackfilled()) {
            backfillTaxInclusiveSaleItems(context);
            settings->setSaleItemTaxModeBackfilled(true);
        }
        TaxSetup::ensure(context, settings);
        if (!settings->loyaltyOpeningBalancesRecorded()) {
            LoyaltyService::recordOpeningBalances(context);
            settings->setLoyaltyOpeningBalancesRecorded(true);
        }
        if (!settings->staffDefaultsApplied()) {
            for (const Ref<Product>& product : serviceProductsOrNone(context))
                product->setAskForStaff(true);
            settings->setStaffDefaultsApplied(true);
        }
        context.save();
    } catch (const std::exception&) {
        // Nothing half-done may ride along on a later save: what wasn't saved goes back, its
        // markers with it, and the next start tries again.
        try {
            context.rollback();
        } catch (const std::exception&) {
        }
    }
}

void StoreMaintenance::backfillTaxInclusiveSaleItems(ModelContext& context)
{
    // Decided in one query over the sales' own columns rather than a query per sale: a five-year
    // store has hundreds of thousands. SQLite's REAL arithmetic is the same double arithmetic, in
    // the same order as Sale::discountTotal().
    const Condition inclusiveSale(
        QStringLiteral("\"sale\" IN (SELECT \"id\" FROM \"Sale\" WHERE \"refundOfSaleID\" IS NULL AND "
                       "\"taxTotal\" > ? AND abs(\"total\" - (\"subtotal\" - (\"lineDiscountTotal\" + "
                       "\"saleDiscount\" + \"pointsDiscount\"))) <= ?)"),
        {noTax, inclusiveTotalTolerance});
    const QList<Ref<SaleItem>> items =
        context.fetch<SaleItem>(FetchDescriptor(inclusiveSale && SaleItem::Col::pricesIncludeTax == false));
    for (const Ref<SaleItem>& item : items)
        item->setPricesIncludeTax(true);
}
