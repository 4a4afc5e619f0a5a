// SalesService: parking a cart and taking it back. Nothing but the cart's contents is copied: stock,
// points, the till and the receipt sequence stay as they are.

#include "selling/salesservice.h"

#include "clock/clock.h"
#include "records/heldsaleitem.h"
#include "selling/receiptnumbergenerator.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

Ref<HeldSale> SalesService::hold(const Cart& cart, const Ref<User>& cashier, const QString& note,
                                 std::optional<qint64> sequence)
{
    if (cart.lines().isEmpty())
        throw SalesError::emptyCart();
    if (!sequence) {
        // Every hold of any status counts, so a number is never handed out twice. A count that
        // can't be read only costs the label its number.
        qint64 made = 0;
        try {
            made = m_context.count<HeldSale>();
        } catch (const StoreError&) {
        }
        sequence = made + 1;
    }
    const Ref<Customer>& customer = cart.customer();

    return performUnitOfWork(m_context, [&] {
        auto held = std::make_shared<HeldSale>();
        held->setHeldAt(Clock::now());
        held->setCashier(cashier);
        held->setCustomer(customer);
        held->setNote(note);
        held->setLabel(
            ReceiptNumberGenerator::nextHoldLabel(*sequence, customer ? customer->name() : QString()));
        held->setSaleDiscount(cart.saleDiscount());
        held->setDiscountApprovedUpTo(cart.discountApprovedUpTo());
        held->setDiscountApprovedBy(cart.discountApprovedBy());
        held->setDiscountReason(cart.discountReason());
        held->setAppointmentID(cart.appointmentID());
        m_context.insert(held);
        for (const CartLine& line : cart.lines()) {
            auto item = std::make_shared<HeldSaleItem>();
            item->setProduct(line.product);
            item->setQuantity(line.quantity);
            item->setLineDiscount(line.lineDiscount);
            // For the list's subtotal only: a recalled line without an agreed price rings at the
            // price of the day.
            item->setUnitPriceSnapshot(line.unitPrice());
            item->setPriceOverride(line.priceOverride);
            item->setPriceApprovedBy(line.priceApprovedBy);
            item->setPriceReason(line.priceReason);
            item->setStaffID(line.staffID);
            item->setStaffName(line.staffName);
            item->setStaffCommissionRate(line.staffCommissionRate);
            item->setHeldSale(held);
            m_context.insert(item);
        }
        return held;
    });
}

Cart SalesService::recall(const HeldSale& held)
{
    Cart cart;
    cart.setCustomer(held.customer());
    for (const Ref<HeldSaleItem>& item : held.items()) {
        const Ref<Product> product = item->product();
        if (!product)
            continue;
        CartLine line;
        line.product = product;
        line.quantity = item->quantity();
        line.lineDiscount = item->lineDiscount();
        line.priceOverride = item->priceOverride();
        line.priceApprovedBy = item->priceApprovedBy();
        line.priceReason = item->priceReason();
        line.staffID = item->staffID();
        line.staffName = item->staffName();
        line.staffCommissionRate = item->staffCommissionRate();
        cart.appendLine(line);
    }
    cart.setSaleDiscount(held.saleDiscount());
    cart.setDiscountApprovedUpTo(held.discountApprovedUpTo());
    cart.setDiscountApprovedBy(held.discountApprovedBy());
    cart.setDiscountReason(held.discountReason());
    cart.setAppointmentID(held.appointmentID());
    return cart;
}
