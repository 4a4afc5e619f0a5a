// SalesService: refunds, written as a sale of their own with negative lines.

#include "selling/salesservice.h"

#include "clock/clock.h"
#include "money/rounding.h"
#include "records/payment.h"
#include "records/product.h"
#include "selling/receiptnumbergenerator.h"
#include "store/unitofwork.h"

#include <algorithm>

namespace {

// A line is fully returned once as much came back as was sold, to the thousandth.
bool isFullyReturned(const SaleItem& item)
{
    return Rounding::toThousandths(item.quantity()) <= Rounding::toThousandths(item.returnedQuantity());
}

Ref<SaleItem> refundLine(const SaleItem& original, double quantity, double unitDiscount)
{
    auto line = std::make_shared<SaleItem>();
    line->setProduct(original.product());
    line->setQuantity(-quantity);
    line->setUnitPrice(original.unitPrice());
    line->setUnitCostSnapshot(original.unitCostSnapshot());
    line->setTaxRateSnapshot(original.taxRateSnapshot());
    line->setPricesIncludeTax(original.pricesIncludeTax());
    line->setLineDiscount(-(quantity * unitDiscount));
    // Copied unchanged, so that commission and the per-tax figures follow through negative rows.
    line->setProductNameSnapshot(original.productNameSnapshot());
    line->setSkuSnapshot(original.skuSnapshot());
    line->setProductTypeRaw(original.productTypeRaw());
    line->setSellingUnitRaw(original.sellingUnitRaw());
    line->setTaxComponentsRaw(original.taxComponentsRaw());
    line->setStaffID(original.staffID());
    line->setStaffName(original.staffName());
    line->setCommissionRate(original.commissionRate());
    return line;
}

} // namespace

double SalesService::unitDiscount(const SaleItem& item)
{
    return item.quantity() > 0 ? item.lineDiscount() / item.quantity() : 0;
}

RefundParts SalesService::refundParts(const SaleItem& item, double quantity)
{
    const double taxable = quantity * (item.unitPrice() - unitDiscount(item));
    const double rate = item.taxRateSnapshot();
    const double tax = item.pricesIncludeTax() ? taxable * rate / (rate + 1) : taxable * rate;
    return {taxable, tax};
}

double SalesService::refundAmount(const QList<RefundEntry>& entries)
{
    double sum = 0;
    for (const RefundEntry& entry : entries) {
        if (entry.quantity <= 0)
            continue;
        const RefundParts parts = refundParts(*entry.item, entry.quantity);
        sum += entry.item->pricesIncludeTax() ? parts.taxable : parts.taxable + parts.tax;
    }
    return Rounding::toCents(sum);
}

Ref<Sale> SalesService::writeRefund(const Ref<Sale>& originalSale, const QList<RefundEntry>& itemsToReturn,
                                    const QString& reason, const Ref<User>& cashier,
                                    const Ref<TillShift>& tillShift, PaymentMethodType refundMethod,
                                    AppSettings& settings)
{
    Q_ASSERT(originalSale);
    return performUnitOfWork(m_context, [&] {
        const QDateTime now = Clock::now();
        settings.setLastReceiptSequence(settings.lastReceiptSequence() + 1);
        const QString invoice = ReceiptNumberGenerator::next(settings.lastReceiptSequence(), now);

        const Ref<Sale> refund = Sale::make(invoice, cashier, originalSale->customer(), tillShift);
        refund->setTimestamp(now);
        refund->setRefundOfSaleID(originalSale->id());
        refund->setRefundReason(reason);
        refund->setStatus(SaleStatus::refunded);
        m_context.insert(refund);

        double subtotal = 0;
        double lineDiscount = 0;
        double tax = 0;
        double total = 0;
        double netRefund = 0;
        for (const RefundEntry& entry : itemsToReturn) {
            const double quantity = entry.quantity;
            if (quantity <= 0)
                continue;
            SaleItem& item = *entry.item;
            const double unit = unitDiscount(item);
            const RefundParts parts = refundParts(item, quantity);
            const Ref<SaleItem> line = refundLine(item, quantity, unit);
            line->setSale(refund);
            m_context.insert(line);
            item.setReturnedQuantity(Rounding::toThousandths(quantity + item.returnedQuantity()));
            // Stock returns whole: there is no putting goods aside as damaged. A deleted product
            // refunds in money only.
            if (const Ref<Product> product = item.product())
                m_inventoryService.restockForRefund(product, quantity, refund, cashier);

            subtotal -= quantity * item.unitPrice();
            lineDiscount -= quantity * unit;
            tax -= parts.tax;
            total -= item.pricesIncludeTax() ? parts.taxable : parts.taxable + parts.tax;
            netRefund += item.pricesIncludeTax() ? parts.taxable - parts.tax : parts.taxable;
        }
        refund->setSubtotal(Rounding::toCents(subtotal));
        refund->setLineDiscountTotal(Rounding::toCents(lineDiscount));
        refund->setTaxTotal(Rounding::toCents(tax));
        refund->setTotal(Rounding::toCents(total));

        const Ref<Payment> payment = Payment::make(refundMethod, refund->total(), 0, 0, QString());
        payment->setTimestamp(now);
        payment->setSale(refund);
        m_context.insert(payment);

        const QList<Ref<SaleItem>> lines = originalSale->items();
        const bool fullyReturned = std::all_of(
            lines.begin(), lines.end(), [](const Ref<SaleItem>& line) { return isFullyReturned(*line); });
        originalSale->setStatus(fullyReturned ? SaleStatus::refunded : SaleStatus::partiallyRefunded);

        const double originalNet = originalSale->total() - originalSale->taxTotal();
        const double share = originalNet > 0 ? netRefund / originalNet : 1.0;
        m_loyalty.applyRefund(refund, originalSale, share, fullyReturned, cashier);
        return refund;
    });
}
