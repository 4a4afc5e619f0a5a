#include "selling/cart.h"

#include "money/rounding.h"
#include "money/tolerances.h"

#include <algorithm>
#include <cmath>

void Cart::setCustomer(const Ref<Customer>& customer)
{
    const bool same = customer && m_customer ? customer->id() == m_customer->id() : customer == m_customer;
    m_customer = customer;
    if (same)
        return;
    m_pointsToRedeem = 0;
    m_valuePerPoint = 0;
    m_redemptionApprovedBy.clear();
}

CartLine* Cart::line(const QUuid& lineID)
{
    const auto found =
        std::find_if(m_lines.begin(), m_lines.end(), [&](const CartLine& l) { return l.id == lineID; });
    return found == m_lines.end() ? nullptr : &*found;
}

void Cart::addOrIncrement(const Ref<Product>& product, double quantity)
{
    Q_ASSERT(product);
    const QUuid productID = product->id();
    for (CartLine& existing : m_lines) {
        if (existing.product->id() == productID) {
            existing.quantity = Rounding::toThousandths(existing.quantity + quantity);
            return;
        }
    }
    CartLine added;
    added.product = product;
    added.quantity = quantity;
    m_lines.append(std::move(added));
}

void Cart::updateQuantity(const QUuid& lineID, double quantity)
{
    if (quantity <= 0) {
        removeLine(lineID);
        return;
    }
    if (CartLine* found = line(lineID))
        found->quantity = Rounding::toThousandths(quantity);
}

void Cart::removeLine(const QUuid& lineID)
{
    m_lines.removeIf([&](const CartLine& l) { return l.id == lineID; });
}

void Cart::setLineDiscount(const QUuid& lineID, double discount)
{
    if (CartLine* found = line(lineID))
        found->lineDiscount = std::max(discount, 0.0);
}

void Cart::setPrice(const QUuid& lineID, double price, const QString& approvedBy, const QString& reason)
{
    CartLine* found = line(lineID);
    if (!found)
        return;
    const double p = Rounding::toCents(std::max(price, 0.0));
    if (std::abs(p - found->product->sellingPrice()) < Tolerance::priceChange) {
        found->priceOverride.reset();
        found->priceApprovedBy.clear();
        found->priceReason.clear();
        return;
    }
    found->priceOverride = p;
    found->priceApprovedBy = approvedBy;
    found->priceReason = reason;
}

void Cart::setStaff(const QUuid& lineID, const Ref<StaffMember>& staff)
{
    CartLine* found = line(lineID);
    if (!found)
        return;
    found->staffID = staff ? std::optional<QUuid>(staff->id()) : std::nullopt;
    found->staffName = staff ? staff->name() : QString();
    found->staffCommissionRate = staff ? staff->commissionRate() : 0;
}

QList<CartLine> Cart::linesMissingStaff(bool staffAvailable) const
{
    QList<CartLine> missing;
    if (!staffAvailable)
        return missing;
    for (const CartLine& l : m_lines) {
        if (l.product->askForStaff() && !l.staffID)
            missing.append(l);
    }
    return missing;
}

CartCalculation Cart::calculation(bool taxInclusive) const
{
    std::vector<TaxCalculator::LineInput> inputs;
    inputs.reserve(size_t(m_lines.size()));
    for (const CartLine& l : m_lines) {
        // Non-taxable products already carry rate 0, so the rate is taken as it stands.
        inputs.push_back({l.grossAmount(), l.lineDiscount, l.product->taxRate()});
    }
    const double pointsValue = Rounding::toCents(m_valuePerPoint * double(m_pointsToRedeem));
    const double cashier = std::max(m_saleDiscount, 0.0);

    CartCalculation result = TaxCalculator::calculate(inputs, cashier + pointsValue, taxInclusive);
    const double applied = result.saleDiscount;
    const double cashierPart = std::min(cashier, applied);
    result.saleDiscount = Rounding::toCents(cashierPart);
    result.pointsDiscount = Rounding::toCents(applied - cashierPart);
    return result;
}

double Cart::grossTotal() const
{
    double sum = 0;
    for (const CartLine& l : m_lines)
        sum += l.grossAmount();
    return Rounding::toCents(sum);
}

double Cart::cashierDiscountTotal() const
{
    double sum = std::max(m_saleDiscount, 0.0);
    for (const CartLine& l : m_lines)
        sum += std::max(l.lineDiscount, 0.0);
    return Rounding::toCents(sum);
}

double Cart::discountableAmount() const
{
    double sum = 0;
    for (const CartLine& l : m_lines)
        sum += std::max(l.grossAmount() - l.lineDiscount, 0.0);
    if (m_saleDiscount >= 0)
        sum -= m_saleDiscount;
    return Rounding::toCents(std::max(sum, 0.0));
}

qint64 Cart::itemCount() const
{
    qint64 count = 0;
    for (const CartLine& l : m_lines) {
        // An unknown unit reads as each, so it is counted too.
        if (l.product->sellingUnit() == SellingUnit::each)
            count += std::llround(l.quantity);
        else
            count += 1;
    }
    return count;
}
