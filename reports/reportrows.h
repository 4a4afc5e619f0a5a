#pragma once

#include "records/enums.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

// The rows ReportCalculator gives: plain values, money unrounded unless a figure says otherwise.

struct DailySalesSummary {
    QDateTime date; // the start of the day
    qint64 transactionCount = 0;
    double grossSales = 0;
    double discounts = 0;
    double tax = 0;
    double netTotal = 0;
    double averageBasket = 0;
};

struct ProductSalesRow {
    QUuid id;
    QString productName;
    QString sku;
    ProductType productType = ProductType::inventory;
    SellingUnit sellingUnit = SellingUnit::each;
    double quantitySold = 0;
    double revenue = 0;
    double cost = 0;
    double profit = 0;
};

struct CategorySalesRow {
    QString categoryName;
    double quantitySold = 0;
    double revenue = 0;
};

struct TypeSalesRow {
    ProductType productType = ProductType::inventory;
    double quantitySold = 0;
    double revenue = 0;
    double cost = 0;
    double profit = 0;
};

struct CashierSalesRow {
    QUuid id;
    QString cashierName;
    qint64 transactionCount = 0;
    double total = 0;
};

struct PaymentMethodRow {
    QString method; // the word shown, as on the receipt
    qint64 count = 0;
    double total = 0;
};

struct StockValuationRow {
    QUuid id;
    QString productName;
    QString sku;
    SellingUnit sellingUnit = SellingUnit::each;
    double quantity = 0;
    double costPrice = 0;
    double value = 0;
};

struct LowStockRow {
    QUuid id;
    QString productName;
    QString sku;
    SellingUnit sellingUnit = SellingUnit::each;
    double quantity = 0;
    double reorderLevel = 0;
};

struct ShiftReportRow {
    QUuid id;
    QString cashierName;
    QDateTime openedAt;
    std::optional<QDateTime> closedAt;
    double openingFloat = 0;
    std::optional<double> expectedCash;
    std::optional<double> countedCash;
    std::optional<double> variance;
};

// Both figures rounded to cents.
struct TaxSummary {
    double salesBeforeTax = 0;
    double taxCollected = 0;
};

// Both figures rounded to cents.
struct TaxByTaxRow {
    QString label;
    double taxable = 0;
    double tax = 0;
};

struct VoidsSummary {
    qint64 count = 0;
    double total = 0;
};
