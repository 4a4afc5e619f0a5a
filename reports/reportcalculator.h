#pragma once

#include "records/inventorymovement.h"
#include "records/product.h"
#include "records/tillshift.h"
#include "reports/reportrows.h"
#include "reports/reportsale.h"

#include <QDate>
#include <QList>
#include <QStringList>

// The figures of every report, as pure functions: values in, rows out, nothing fetched or written.
// Every figure over sales starts from the sales that count, refunds included, so a refund's
// negative lines net out of the sums; only voids() looks at voided sales. Ties in a sort keep the
// order in which their rows were first made.
class ReportCalculator {
public:
    // Every sale that isn't voided, in the given order.
    static QList<ReportSale> counted(const QList<ReportSale>& sales);
    // The sales voided on `day`, by the day of voidedAt, or of timestamp when that is absent.
    static VoidsSummary voids(const QList<ReportSale>& sales, QDate day);
    // The counted sales rung up on `day`; refunds change the money but not the count.
    static DailySalesSummary dailySales(const QList<ReportSale>& sales, QDate day);

    // Highest revenue first; a line whose product is gone is left out.
    static QList<ProductSalesRow> salesByProduct(const QList<ReportSale>& sales);
    // Highest revenue first; lines without a product or category count as "Uncategorized".
    static QList<CategorySalesRow> salesByCategory(const QList<ReportSale>& sales);
    // In the order of ProductType, leaving out a type that sold nothing.
    static QList<TypeSalesRow> salesByType(const QList<ReportSale>& sales);
    // Highest total first; a sale without a cashier is left out.
    static QList<CashierSalesRow> salesByCashier(const QList<ReportSale>& sales);
    static TaxSummary taxReport(const QList<ReportSale>& sales);
    // One row per tax in order of first appearance, then "Not taxable" when untaxed sales add up
    // to more than half a cent.
    static QList<TaxByTaxRow> taxByTax(const QList<ReportSale>& sales);
    // Highest total first; a refund's payment adds to the count and takes from the total.
    static QList<PaymentMethodRow> paymentMethodTotals(const QList<ReportSale>& sales);
    // Rounded to cents.
    static double grossProfit(const QList<ReportSale>& sales);

    // Products that track stock, inactive ones included; highest value first.
    static QList<StockValuationRow> stockValuation(const QList<Ref<Product>>& products);
    // Active stock-keeping products at or below their reorder level; lowest quantity first.
    static QList<LowStockRow> lowStock(const QList<Ref<Product>>& products);
    // Newest first.
    static QList<ShiftReportRow> shiftReport(const QList<Ref<TillShift>>& shifts);
    // Deliveries and cost edits from the start of `from` to the end of `to`, newest first, as
    // nine cells: date, product, sku, change, quantity in, unit cost paid, cost before, cost
    // after, by.
    static QList<QStringList> costChanges(const QList<Ref<InventoryMovement>>& movements, QDate from,
                                          QDate to);
};
