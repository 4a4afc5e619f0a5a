#pragma once

#include "money/taxcalculator.h"
#include "records/customer.h"
#include "records/staffmember.h"
#include "selling/cartline.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// The sale being built: a plain value, copied freely and never stored as such. Operations that
// take a line id do nothing at all when no line has it. calculation() and the totals run on every
// screen update, so they pass over the lines once and touch only products already in memory.
class Cart {
public:
    const QList<CartLine>& lines() const { return m_lines; }
    // For rebuilding a parked sale line by line; appended as given, never merged.
    void appendLine(const CartLine& line) { m_lines.append(line); }

    const Ref<Customer>& customer() const { return m_customer; }
    // A different customer (by id; none differs from any) drops the points to redeem and their
    // approval: points belong to whoever holds them.
    void setCustomer(const Ref<Customer>& customer);

    double saleDiscount() const { return m_saleDiscount; }
    void setSaleDiscount(double amount) { m_saleDiscount = amount; }
    qint64 pointsToRedeem() const { return m_pointsToRedeem; }
    void setPointsToRedeem(qint64 points) { m_pointsToRedeem = points; }
    double valuePerPoint() const { return m_valuePerPoint; }
    void setValuePerPoint(double value) { m_valuePerPoint = value; }
    double discountApprovedUpTo() const { return m_discountApprovedUpTo; }
    void setDiscountApprovedUpTo(double amount) { m_discountApprovedUpTo = amount; }
    QString discountApprovedBy() const { return m_discountApprovedBy; }
    void setDiscountApprovedBy(const QString& name) { m_discountApprovedBy = name; }
    QString discountReason() const { return m_discountReason; }
    void setDiscountReason(const QString& reason) { m_discountReason = reason; }
    QString redemptionApprovedBy() const { return m_redemptionApprovedBy; }
    void setRedemptionApprovedBy(const QString& name) { m_redemptionApprovedBy = name; }
    std::optional<QUuid> appointmentID() const { return m_appointmentID; }
    void setAppointmentID(const std::optional<QUuid>& id) { m_appointmentID = id; }

    // Merges on the product alone, whatever price, discount or staff the line already has.
    void addOrIncrement(const Ref<Product>& product, double quantity);
    // Zero or less removes the line.
    void updateQuantity(const QUuid& lineID, double quantity);
    void removeLine(const QUuid& lineID);
    void setLineDiscount(const QUuid& lineID, double discount);
    // A price within the tolerance of the list price is a return to it: the override and its
    // approval go.
    void setPrice(const QUuid& lineID, double price, const QString& approvedBy, const QString& reason);
    // Null clears the staff member.
    void setStaff(const QUuid& lineID, const Ref<StaffMember>& staff);
    QList<CartLine> linesMissingStaff(bool staffAvailable) const;

    // Redeemed points are spread over the lines like a discount; when the lines can't take both,
    // the cashier's discount is applied first and the points lose out.
    CartCalculation calculation(bool taxInclusive) const;

    double grossTotal() const;
    // What the cashier typed, lines and sale; points are not a cashier's discount.
    double cashierDiscountTotal() const;
    // The most that redeemed points may take off.
    double discountableAmount() const;
    // Counted items are counted; a measured line (2 kg of rice) counts 1.
    qint64 itemCount() const;

    friend bool operator==(const Cart&, const Cart&) = default;

private:
    CartLine* line(const QUuid& lineID);

    QList<CartLine> m_lines;
    Ref<Customer> m_customer;
    double m_saleDiscount = 0;
    qint64 m_pointsToRedeem = 0;
    double m_valuePerPoint = 0;
    double m_discountApprovedUpTo = 0;
    QString m_discountApprovedBy;
    QString m_discountReason;
    QString m_redemptionApprovedBy;
    std::optional<QUuid> m_appointmentID;
};
