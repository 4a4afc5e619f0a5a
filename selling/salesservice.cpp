#include "selling/salesservice.h"

#include "clock/clock.h"
#include "money/rounding.h"
#include "records/appointment.h"
#include "records/payment.h"
#include "records/product.h"
#include "records/saleitem.h"
#include "records/tax.h"
#include "records/taxgroup.h"
#include "selling/receiptnumbergenerator.h"
#include "selling/saleserror.h"
#include "stock/inventoryerror.h"
#include "store/unitofwork.h"

#include <algorithm>
#include <cmath>

namespace {

// Amounts typed in cents differ by float noise (100.01 - 100 is 0.0100000000000051); cutting the
// difference to millionths first lets a difference of exactly the tolerance pass, as intended.
bool beyond(double difference, double tolerance)
{
    return Rounding::toPlaces(difference, 6) > tolerance;
}

} // namespace

SalesService::SalesService(ModelContext& context, InventoryServicing& inventoryService,
                           StaffChecking* staffCheck)
    : m_context(context)
    , m_inventoryService(inventoryService)
    , m_staffCheck(staffCheck)
    , m_accounts(context)
    , m_loyalty(context)
{
}

Ref<Sale> SalesService::checkout(const Cart& cart, const QList<PaymentInput>& payments,
                                 const Ref<User>& cashier, const Ref<TillShift>& tillShift,
                                 AppSettings& settings)
{
    if (cart.lines().isEmpty())
        throw SalesError::emptyCart();
    // Who did a service is asked before the tender, as the till asks it before the payment sheet.
    if (m_staffCheck)
        m_staffCheck->checkStaff(cart);
    if (payments.isEmpty())
        throw SalesError::missingPayment();

    if (!settings.allowNegativeStock()) {
        // Each line on its own: two lines of one product are not added up here.
        for (const CartLine& line : cart.lines()) {
            const Product& product = *line.product;
            if (product.tracksStock() && product.stockQuantity() < line.quantity)
                throw InventoryError::insufficientStock(product.name(), product.stockQuantity(),
                                                        line.quantity);
        }
    }

    for (const PaymentInput& payment : payments) {
        if (payment.method == PaymentMethodType::cash &&
            beyond(payment.amount - payment.tenderedAmount, m_paymentTolerance))
            throw SalesError::insufficientCashTendered(payment.amount, payment.tenderedAmount);
    }

    LoyaltyService::checkRedemption(cart.pointsToRedeem(), cart.customer(), cart.discountableAmount(),
                                    settings);

    // A point is worth what it is worth at the moment of the sale, whatever the cart was told.
    Cart priced = cart;
    if (cart.pointsToRedeem() >= 1)
        priced.setValuePerPoint(settings.loyaltyValuePerPoint());
    const CartCalculation calculation = priced.calculation(settings.taxInclusivePricing());

    double onAccount = 0;
    double paid = 0;
    for (const PaymentInput& payment : payments) {
        if (payment.method == PaymentMethodType::onAccount)
            onAccount += payment.amount;
        paid += payment.amount;
    }
    m_accounts.checkCredit(priced.customer(), onAccount);
    // The cent that the tolerance lets through is stored nowhere: total and payments stay as given.
    if (beyond(std::abs(paid - calculation.total), m_paymentTolerance))
        throw SalesError::paymentMismatch(calculation.total, paid);

    return performUnitOfWork(
        m_context, [&] { return writeSale(priced, calculation, payments, cashier, tillShift, settings); });
}

Ref<Sale> SalesService::writeSale(const Cart& cart, const CartCalculation& calculation,
                                  const QList<PaymentInput>& payments, const Ref<User>& cashier,
                                  const Ref<TillShift>& tillShift, AppSettings& settings)
{
    Q_ASSERT(calculation.lines.size() == size_t(cart.lines().size()));
    const QDateTime now = Clock::now();

    // The items are made before anything is written: making one reads its product's tax group,
    // and a read after a write would first flush what was written so far, once per line.
    QList<Ref<SaleItem>> items;
    items.reserve(cart.lines().size());
    // Lines share a few tax groups; held here, each group and its taxes are read once per sale.
    QList<RecordRef> taxRecords;
    for (qsizetype i = 0; i < cart.lines().size(); ++i) {
        const CartLine& line = cart.lines()[i];
        const LineCalculation& priced = calculation.lines[size_t(i)];
        const Ref<Product>& product = line.product;
        if (const Ref<TaxGroup> group = product->taxGroup();
            group && !taxRecords.contains(RecordRef(group))) {
            taxRecords.append(group);
            for (const Ref<Tax>& tax : group->taxes())
                taxRecords.append(tax);
        }
        // The item keeps all that was taken off it: its own discount and its share of the sale's,
        // redeemed points included.
        const Ref<SaleItem> item =
            SaleItem::make(product, line.quantity, line.unitPrice(), product->costPrice(), product->taxRate(),
                           priced.lineDiscount + priced.saleDiscountShare, settings.taxInclusivePricing());
        if (line.staffID) {
            item->setStaffID(line.staffID);
            item->setStaffName(line.staffName);
            item->setCommissionRate(product->commissionRate().value_or(line.staffCommissionRate));
        }
        items.append(item);
    }

    settings.setLastReceiptSequence(settings.lastReceiptSequence() + 1);
    const QString invoice = ReceiptNumberGenerator::next(settings.lastReceiptSequence(), now);

    const Ref<Sale> sale = Sale::make(invoice, cashier, cart.customer(), tillShift);
    sale->setTimestamp(now);
    sale->setSubtotal(calculation.subtotal);
    sale->setLineDiscountTotal(calculation.lineDiscountTotal);
    sale->setSaleDiscount(calculation.saleDiscount);
    sale->setPointsDiscount(calculation.pointsDiscount);
    sale->setTaxTotal(calculation.taxTotal);
    sale->setTotal(calculation.total);
    sale->setStatus(SaleStatus::completed);
    m_context.insert(sale);

    for (qsizetype i = 0; i < items.size(); ++i) {
        items[i]->setSale(sale);
        m_context.insert(items[i]);
        m_inventoryService.deductForSale(cart.lines()[i].product, cart.lines()[i].quantity, sale,
                                         settings.allowNegativeStock(), cashier);
    }

    for (const PaymentInput& input : payments) {
        const bool cash = input.method == PaymentMethodType::cash;
        // Card and other tenders may carry a stale tendered amount from the sheet: it is ignored.
        const double tendered = cash ? input.tenderedAmount : input.amount;
        const double change =
            cash ? Rounding::toCents(std::max(input.tenderedAmount - input.amount, 0.0)) : 0.0;
        const Ref<Payment> payment =
            Payment::make(input.method, input.amount, tendered, change, input.reference);
        payment->setTimestamp(now);
        payment->setSale(sale);
        m_context.insert(payment);
    }

    m_loyalty.applySale(sale, cart.pointsToRedeem(), settings, cashier);

    if (cart.appointmentID())
        completeAppointment(*cart.appointmentID(), invoice);
    return sale;
}

void SalesService::completeAppointment(const QUuid& appointmentID, const QString& invoiceNumber)
{
    // One that was deleted meanwhile is no reason to refuse the sale.
    const Ref<Appointment> appointment =
        m_context.fetchFirst<Appointment>(FetchDescriptor(Appointment::Col::id == appointmentID));
    if (!appointment)
        return;
    appointment->setStatusRaw(QStringLiteral("completed"));
    appointment->setSaleInvoiceNumber(invoiceNumber);
}
