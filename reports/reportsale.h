#pragma once

#include "money/lineamounts.h"
#include "money/taxbreakdown.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

// What the reports read of sales, as plain values: a year of sales is read in a few queries without
// making a record of any of it. The fields carry the names and meanings of the records' own.

// A product as it is now, not as the line's snapshot has it: reports name and group by this.
struct ReportProduct {
    QUuid id;
    QString name;
    QString sku;
    QString productTypeRaw;
    QString sellingUnitRaw;
    std::optional<QString> categoryName; // absent when the product has no category
};

struct ReportCashier {
    QUuid id;
    QString name;
};

// One SaleItem.
struct ReportItem {
    std::shared_ptr<const ReportProduct> product; // null once the product is deleted
    double quantity = 0;
    double unitPrice = 0;
    double unitCostSnapshot = 0;
    double taxRateSnapshot = 0;
    double lineDiscount = 0;
    bool pricesIncludeTax = false;
    QString productTypeRaw = QStringLiteral("inventory");
    QString taxComponentsRaw;

    // As SaleItem works them out; nothing is rounded.
    double grossAmount() const { return unitPrice * quantity; }
    double taxAmount() const { return amounts().tax(); }
    double lineTotal() const { return amounts().total(); }
    std::vector<TaxAmount> taxBreakdown() const;

private:
    LineAmounts amounts() const { return {grossAmount(), lineDiscount, taxRateSnapshot, pricesIncludeTax}; }
};

// One Payment of a sale.
struct ReportPayment {
    QString methodRaw = QStringLiteral("cash");
    double amount = 0;
};

// One Sale with its items and payments in their stored order.
struct ReportSale {
    QDateTime timestamp;
    QString statusRaw = QStringLiteral("completed");
    double subtotal = 0;
    double lineDiscountTotal = 0;
    double saleDiscount = 0;
    double pointsDiscount = 0;
    double taxTotal = 0;
    double total = 0;
    bool isRefund = false; // refundOfSaleID is present
    std::optional<QDateTime> voidedAt;
    std::shared_ptr<const ReportCashier> cashier; // null when the sale has none
    QList<ReportItem> items;
    QList<ReportPayment> payments;

    bool isVoided() const;
    double discountTotal() const { return lineDiscountTotal + saleDiscount + pointsDiscount; }
};

// One CustomerPayment: money received against a customer's account.
struct ReportAccountPayment {
    QDateTime timestamp;
    QString methodRaw = QStringLiteral("cash");
    double amount = 0;
};
