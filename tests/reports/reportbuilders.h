#pragma once

#include "money/rounding.h"
#include "money/taxcomponent.h"
#include "reports/reportsale.h"

#include <QDateTime>

#include <memory>

// Report values with safe defaults, so each test states only what it is about.

// A fixed local moment, so day boundaries never depend on when the suite runs.
inline QDateTime at(int day, int hour = 12, int minute = 0)
{
    return QDateTime(QDate(2026, 3, day), QTime(hour, minute));
}

inline QDate march(int day)
{
    return QDate(2026, 3, day);
}

inline std::shared_ptr<const ReportProduct>
product(const QString& name, std::optional<QString> category = QStringLiteral("Drinks"),
        const QString& typeRaw = QStringLiteral("inventory"), const QString& unitRaw = QStringLiteral("each"))
{
    return std::make_shared<const ReportProduct>(ReportProduct{
        QUuid::createUuid(), name, name.left(3).toUpper(), typeRaw, unitRaw, std::move(category)});
}

inline std::shared_ptr<const ReportCashier> cashier(const QString& name)
{
    return std::make_shared<const ReportCashier>(ReportCashier{QUuid::createUuid(), name});
}

// The three taxes of a Ghanaian VAT-registered shop, 20% in all.
inline QString ghanaTaxes()
{
    return TaxComponent::encode({{QStringLiteral("NHIL"), 0.025},
                                 {QStringLiteral("GETFund Levy"), 0.025},
                                 {QStringLiteral("VAT"), 0.15}});
}

struct Line {
    std::shared_ptr<const ReportProduct> product = nullptr;
    double quantity = 1;
    double unitPrice = 10;
    double unitCost = 0;
    double taxRate = 0;
    double lineDiscount = 0;
    bool pricesIncludeTax = false;
    QString typeRaw = QStringLiteral("inventory");
    QString taxComponentsRaw = {};
};

inline ReportItem item(const Line& line)
{
    ReportItem made;
    made.product = line.product;
    made.quantity = line.quantity;
    made.unitPrice = line.unitPrice;
    made.unitCostSnapshot = line.unitCost;
    made.taxRateSnapshot = line.taxRate;
    made.lineDiscount = line.lineDiscount;
    made.pricesIncludeTax = line.pricesIncludeTax;
    made.productTypeRaw = line.typeRaw;
    made.taxComponentsRaw = line.taxComponentsRaw;
    return made;
}

// A sale whose totals are its lines' own, rounded as checkout rounds them, paid in full in cash
// unless payments are given. A negative quantity makes it a refund, as refund lines are.
struct NewSale {
    QDateTime when = at(9);
    QList<Line> lines = {Line{}};
    QString statusRaw = QStringLiteral("completed");
    std::optional<QDateTime> voidedAt = std::nullopt;
    std::shared_ptr<const ReportCashier> cashier = nullptr;
    QList<ReportPayment> payments = {};
};

inline ReportSale sale(const NewSale& fields)
{
    ReportSale made;
    made.timestamp = fields.when;
    made.statusRaw = fields.statusRaw;
    made.voidedAt = fields.voidedAt;
    made.cashier = fields.cashier;
    double subtotal = 0;
    double discounts = 0;
    double tax = 0;
    double total = 0;
    for (const Line& line : fields.lines) {
        made.items.append(item(line));
        const ReportItem& added = made.items.last();
        subtotal += added.grossAmount();
        discounts += added.lineDiscount;
        tax += added.taxAmount();
        total += added.lineTotal();
        made.isRefund = made.isRefund || line.quantity < 0;
    }
    made.subtotal = Rounding::toCents(subtotal);
    made.lineDiscountTotal = Rounding::toCents(discounts);
    made.taxTotal = Rounding::toCents(tax);
    made.total = Rounding::toCents(total);
    made.payments = fields.payments;
    if (made.payments.isEmpty())
        made.payments.append({QStringLiteral("cash"), made.total});
    return made;
}
