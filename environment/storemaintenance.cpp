#include "environment/storemaintenance.h"

#include "customers/loyaltyservice.h"
#include "money/taxsetup.h"
#include "records/appsettings.h"
#include "records/product.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

namespace {

// A sale whose total is its net within this was priced with the tax inside; a sale with tax on top
// differs by the whole tax.
constexpr double inclusiveTotalTolerance = 0.011;
// Sales with less tax than this had none to place.
constexpr double noTax = 0.005;

} // namespace

std::optional<QString> StoreMaintenance::run(ModelContext& context)
{
    try {
        performUnitOfWork(context, [&] {
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
                for (const Ref<Product>& product : context.fetch<Product>(
                         FetchDescriptor(Product::Col::productTypeRaw == QStringLiteral("service"))))
                    product->setAskForStaff(true);
                settings->setStaffDefaultsApplied(true);
            }
        });
    } catch (const Refusal& refusal) {
        // Undone whole, markers included, so the next start tries again from the same place.
        qCWarning(lcStore) << "Start-up repairs were not made:" << refusal.description();
        return QStringLiteral("Brindle could not finish its start-up checks of this store and will try "
                              "again next time. %1")
            .arg(refusal.description());
    }
    return std::nullopt;
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
