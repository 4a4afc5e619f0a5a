#include "receipts/receiptdata.h"

#include "money/quantity.h"
#include "money/rounding.h"
#include "money/taxsetup.h"
#include "records/records.h"

namespace {

ReceiptData::Line lineOf(const SaleItem& item)
{
    ReceiptData::Line line;
    line.name = item.staffName().isEmpty()
        ? item.productNameSnapshot()
        : QStringLiteral("%1 (%2)").arg(item.productNameSnapshot(), item.staffName());
    line.quantity = item.quantity();
    line.unitPrice = item.unitPrice();
    line.lineTotal = Rounding::toCents(item.lineTotal());
    // An unknown unit reads as each, which has no symbol.
    line.unitSymbol = SellingUnits::symbol(SellingUnits::fromRaw(item.sellingUnitRaw()));
    return line;
}

} // namespace

QString ReceiptData::Line::quantityText() const
{
    const QString amount = Quantity::format(quantity);
    return unitSymbol.isEmpty() ? amount : amount + QLatin1Char(' ') + unitSymbol;
}

ReceiptData ReceiptData::from(const Sale& sale, const AppSettings& settings)
{
    ReceiptData receipt;
    receipt.businessName = settings.businessName();
    receipt.addressLine = settings.addressLine();
    receipt.phoneNumber = settings.phoneNumber();
    receipt.invoiceNumber = sale.invoiceNumber();
    receipt.timestamp = sale.timestamp();
    const Ref<User> cashier = sale.cashier();
    receipt.cashierName = cashier ? cashier->name() : QStringLiteral("—");
    if (const Ref<Customer> customer = sale.customer())
        receipt.customerName = customer->name();
    const QList<Ref<SaleItem>> items = sale.items();
    for (const Ref<SaleItem>& item : items)
        receipt.lines.append(lineOf(*item));
    receipt.subtotal = sale.subtotal();
    receipt.discountTotal = sale.lineDiscountTotal() + sale.saleDiscount();
    receipt.taxTotal = sale.taxTotal();
    for (const TaxAmount& tax : TaxSetup::breakdown(items, sale.taxTotal()))
        receipt.taxLines.append({tax.label, tax.amount});
    receipt.total = sale.total();
    for (const Ref<Payment>& payment : sale.payments()) {
        receipt.payments.append({PaymentMethodTypes::label(payment->method()), payment->amount(),
                                 payment->tenderedAmount(), payment->changeGiven()});
    }
    receipt.footer = settings.receiptFooter();
    receipt.currencySymbol = settings.currencySymbol();
    receipt.isRefund = sale.isRefund();
    receipt.logoPNG = settings.logoPNG();
    receipt.pointsRedeemed = sale.pointsRedeemed();
    receipt.pointsDiscount = sale.pointsDiscount();
    receipt.pointsEarned = sale.pointsEarned();
    return receipt.withVoidNote(sale);
}

ReceiptData ReceiptData::withVoidNote(const Sale& sale) const
{
    ReceiptData receipt = *this;
    receipt.voidNote.reset();
    if (sale.isVoided()) {
        const QString reason = sale.voidReason().value_or(QString());
        receipt.voidNote = reason.isEmpty() ? QStringLiteral("VOIDED") : QStringLiteral("VOIDED — ") + reason;
    }
    return receipt;
}

QList<ReceiptData::TaxRow> ReceiptData::taxRows() const
{
    if (taxLines.isEmpty())
        return {{QStringLiteral("Tax"), taxTotal, false}};
    QList<TaxRow> rows;
    for (const TaxLine& line : taxLines)
        rows.append({line.label, line.amount, false});
    if (taxLines.size() >= 2)
        rows.append({QStringLiteral("Total Tax"), taxTotal, true});
    return rows;
}

QList<ReceiptData::LoyaltyRow> ReceiptData::loyaltyRows() const
{
    QList<LoyaltyRow> rows;
    if (pointsRedeemed < 0)
        rows.append({QStringLiteral("Points given back"), QString::number(-pointsRedeemed)});
    if (pointsEarned >= 1)
        rows.append({QStringLiteral("Points earned"), QString::number(pointsEarned)});
    else if (pointsEarned < 0)
        rows.append({QStringLiteral("Points taken back"), QString::number(-pointsEarned)});
    if (pointsBalance)
        rows.append({QStringLiteral("Points balance"), QString::number(*pointsBalance)});
    return rows;
}
