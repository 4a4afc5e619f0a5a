#include "reports/reportcalculator.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "records/user.h"
#include "reports/dayrange.h"

#include <QHash>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Untaxed sales of half a cent or less are rounding dust, not a row of their own.
constexpr double untaxedRowThreshold = 0.005;

const QString dash = QStringLiteral("—");

bool counts(const ReportSale& sale)
{
    return !sale.isVoided();
}

template <class Visit> void forEachCountedItem(const QList<ReportSale>& sales, Visit visit)
{
    for (const ReportSale& sale : sales) {
        if (!counts(sale))
            continue;
        for (const ReportItem& item : sale.items)
            visit(item);
    }
}

double revenueOf(const ReportItem& item)
{
    return item.lineTotal() - item.taxAmount();
}

double costOf(const ReportItem& item)
{
    return item.unitCostSnapshot * item.quantity;
}

// Rows made on first sight of their key and kept in that order, so that a stable sort leaves ties
// as they came.
template <class Key, class Row> class RowsByKey {
public:
    template <class Make> Row& at(const Key& key, Make make)
    {
        const auto found = m_index.constFind(key);
        if (found != m_index.constEnd())
            return m_rows[*found];
        m_index.insert(key, m_rows.size());
        m_rows.append(make());
        return m_rows.last();
    }

    QList<Row> rows() const { return m_rows; }

private:
    QHash<Key, qsizetype> m_index;
    QList<Row> m_rows;
};

// Revenue, cost and profit of one line, added the same way wherever a row adds them.
template <class Row> void addSold(Row& row, const ReportItem& item)
{
    const double revenue = revenueOf(item);
    const double cost = costOf(item);
    row.quantitySold += item.quantity;
    row.revenue += revenue;
    row.cost += cost;
    row.profit += revenue - cost;
}

// Revenue by category leaves out the line's tax its own way, not as lineTotal − taxAmount.
double categoryRevenue(const ReportItem& item)
{
    const double net = item.grossAmount() - item.lineDiscount;
    const double rate = item.taxRateSnapshot;
    if (item.pricesIncludeTax)
        return net - net * rate / (rate + 1);
    return (net + item.taxAmount()) - net * rate;
}

QString money(double amount)
{
    return Currency::format(amount, Currency::fixedSign);
}

QString moneyOrDash(const std::optional<double>& amount)
{
    return amount ? money(*amount) : dash;
}

QString tableTime(const QDateTime& moment)
{
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return english.toString(moment.toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
}

template <class Row, class Field> QList<Row> lowestFirst(QList<Row> rows, Field field)
{
    std::stable_sort(rows.begin(), rows.end(),
                     [field](const Row& a, const Row& b) { return a.*field < b.*field; });
    return rows;
}

template <class Row, class Field> QList<Row> highestFirst(QList<Row> rows, Field field)
{
    std::stable_sort(rows.begin(), rows.end(),
                     [field](const Row& a, const Row& b) { return a.*field > b.*field; });
    return rows;
}

} // namespace

QList<ReportSale> ReportCalculator::counted(const QList<ReportSale>& sales)
{
    QList<ReportSale> kept;
    std::copy_if(sales.begin(), sales.end(), std::back_inserter(kept), counts);
    return kept;
}

VoidsSummary ReportCalculator::voids(const QList<ReportSale>& sales, QDate day)
{
    const DayRange range(day);
    VoidsSummary summary;
    for (const ReportSale& sale : sales) {
        if (sale.isVoided() && range.contains(sale.voidedAt.value_or(sale.timestamp))) {
            ++summary.count;
            summary.total += sale.total;
        }
    }
    return summary;
}

DailySalesSummary ReportCalculator::dailySales(const QList<ReportSale>& sales, QDate day)
{
    const DayRange range(day);
    DailySalesSummary summary;
    summary.date = day.startOfDay();
    for (const ReportSale& sale : sales) {
        if (!counts(sale) || !range.contains(sale.timestamp))
            continue;
        summary.grossSales += sale.subtotal;
        summary.discounts += sale.discountTotal();
        summary.tax += sale.taxTotal;
        summary.netTotal += sale.total;
        if (!sale.isRefund)
            ++summary.transactionCount;
    }
    if (summary.transactionCount > 0)
        summary.averageBasket = Rounding::toCents(summary.netTotal / double(summary.transactionCount));
    summary.grossSales = Rounding::toCents(summary.grossSales);
    summary.discounts = Rounding::toCents(summary.discounts);
    summary.tax = Rounding::toCents(summary.tax);
    summary.netTotal = Rounding::toCents(summary.netTotal);
    return summary;
}

QList<ProductSalesRow> ReportCalculator::salesByProduct(const QList<ReportSale>& sales)
{
    RowsByKey<QUuid, ProductSalesRow> rows;
    forEachCountedItem(sales, [&](const ReportItem& item) {
        const ReportProduct* product = item.product.get();
        if (!product)
            return;
        ProductSalesRow& row = rows.at(product->id, [product] {
            ProductSalesRow made;
            made.id = product->id;
            made.productName = product->name;
            made.sku = product->sku;
            made.productType = ProductTypes::fromRaw(product->productTypeRaw);
            made.sellingUnit = SellingUnits::fromRaw(product->sellingUnitRaw);
            return made;
        });
        addSold(row, item);
    });
    return highestFirst(rows.rows(), &ProductSalesRow::revenue);
}

QList<CategorySalesRow> ReportCalculator::salesByCategory(const QList<ReportSale>& sales)
{
    static const QString uncategorized = QStringLiteral("Uncategorized");
    RowsByKey<QString, CategorySalesRow> rows;
    forEachCountedItem(sales, [&](const ReportItem& item) {
        const QString& name =
            item.product && item.product->categoryName ? *item.product->categoryName : uncategorized;
        CategorySalesRow& row = rows.at(name, [&name] { return CategorySalesRow{name, 0, 0}; });
        row.quantitySold += item.quantity;
        row.revenue += categoryRevenue(item);
    });
    return highestFirst(rows.rows(), &CategorySalesRow::revenue);
}

QList<TypeSalesRow> ReportCalculator::salesByType(const QList<ReportSale>& sales)
{
    static constexpr std::array<ProductType, 3> order{ProductType::inventory, ProductType::nonInventory,
                                                      ProductType::service};
    std::array<std::optional<TypeSalesRow>, order.size()> byType;
    forEachCountedItem(sales, [&](const ReportItem& item) {
        const ProductType type = ProductTypes::fromRaw(item.productTypeRaw);
        std::optional<TypeSalesRow>& row =
            byType[size_t(std::find(order.begin(), order.end(), type) - order.begin())];
        if (!row)
            row = TypeSalesRow{type, 0, 0, 0, 0};
        addSold(*row, item);
    });
    QList<TypeSalesRow> rows;
    for (const std::optional<TypeSalesRow>& row : byType) {
        if (row)
            rows.append(*row);
    }
    return rows;
}

QList<CashierSalesRow> ReportCalculator::salesByCashier(const QList<ReportSale>& sales)
{
    RowsByKey<QUuid, CashierSalesRow> rows;
    for (const ReportSale& sale : sales) {
        if (!counts(sale) || !sale.cashier)
            continue;
        const ReportCashier& cashier = *sale.cashier;
        CashierSalesRow& row = rows.at(cashier.id, [&cashier] {
            return CashierSalesRow{cashier.id, cashier.name, 0, 0};
        });
        row.total += sale.total;
        if (!sale.isRefund)
            ++row.transactionCount;
    }
    return highestFirst(rows.rows(), &CashierSalesRow::total);
}

TaxSummary ReportCalculator::taxReport(const QList<ReportSale>& sales)
{
    TaxSummary summary;
    for (const ReportSale& sale : sales) {
        if (!counts(sale))
            continue;
        summary.salesBeforeTax += sale.subtotal - sale.discountTotal();
        summary.taxCollected += sale.taxTotal;
    }
    summary.salesBeforeTax = Rounding::toCents(summary.salesBeforeTax);
    summary.taxCollected = Rounding::toCents(summary.taxCollected);
    return summary;
}

QList<TaxByTaxRow> ReportCalculator::taxByTax(const QList<ReportSale>& sales)
{
    RowsByKey<QString, TaxByTaxRow> rows;
    double untaxed = 0;
    forEachCountedItem(sales, [&](const ReportItem& item) {
        const double net = revenueOf(item);
        const std::vector<TaxAmount> breakdown = item.taxBreakdown();
        if (breakdown.empty())
            untaxed += net;
        // A line with two taxes counts its net under each, so the taxable column doesn't add up to sales.
        for (const TaxAmount& component : breakdown) {
            TaxByTaxRow& row = rows.at(component.label, [&component] {
                return TaxByTaxRow{component.label, 0, 0};
            });
            row.taxable += net;
            row.tax += component.amount;
        }
    });
    QList<TaxByTaxRow> result = rows.rows();
    for (TaxByTaxRow& row : result) {
        row.taxable = Rounding::toCents(row.taxable);
        row.tax = Rounding::toCents(row.tax);
    }
    if (std::abs(untaxed) > untaxedRowThreshold)
        result.append({QStringLiteral("Not taxable"), Rounding::toCents(untaxed), 0});
    return result;
}

QList<PaymentMethodRow> ReportCalculator::paymentMethodTotals(const QList<ReportSale>& sales)
{
    RowsByKey<QString, PaymentMethodRow> rows;
    for (const ReportSale& sale : sales) {
        if (!counts(sale))
            continue;
        for (const ReportPayment& payment : sale.payments) {
            const QString method = PaymentMethodTypes::label(PaymentMethodTypes::fromRaw(payment.methodRaw));
            PaymentMethodRow& row = rows.at(method, [&method] { return PaymentMethodRow{method, 0, 0}; });
            ++row.count;
            row.total += payment.amount;
        }
    }
    return highestFirst(rows.rows(), &PaymentMethodRow::total);
}

double ReportCalculator::grossProfit(const QList<ReportSale>& sales)
{
    double profit = 0;
    forEachCountedItem(sales, [&](const ReportItem& item) { profit += revenueOf(item) - costOf(item); });
    return Rounding::toCents(profit);
}

QList<StockValuationRow> ReportCalculator::stockValuation(const QList<Ref<Product>>& products)
{
    QList<StockValuationRow> rows;
    for (const Ref<Product>& product : products) {
        if (!product->tracksStock())
            continue;
        rows.append({product->id(), product->name(), product->sku(), product->sellingUnit(),
                     product->stockQuantity(), product->costPrice(),
                     product->stockQuantity() * product->costPrice()});
    }
    return highestFirst(rows, &StockValuationRow::value);
}

QList<LowStockRow> ReportCalculator::lowStock(const QList<Ref<Product>>& products)
{
    QList<LowStockRow> rows;
    for (const Ref<Product>& product : products) {
        if (!product->isActive() || !product->isLowStock())
            continue;
        rows.append({product->id(), product->name(), product->sku(), product->sellingUnit(),
                     product->stockQuantity(), product->reorderLevel()});
    }
    return lowestFirst(rows, &LowStockRow::quantity);
}

QList<ShiftReportRow> ReportCalculator::shiftReport(const QList<Ref<TillShift>>& shifts)
{
    QList<ShiftReportRow> rows;
    for (const Ref<TillShift>& shift : shifts) {
        const Ref<User> cashier = shift->cashier();
        rows.append({shift->id(), cashier ? cashier->name() : dash, shift->openedAt(), shift->closedAt(),
                     shift->openingFloat(), shift->expectedCash(), shift->countedCash(), shift->variance()});
    }
    return highestFirst(rows, &ShiftReportRow::openedAt);
}

QList<QStringList> ReportCalculator::costChanges(const QList<Ref<InventoryMovement>>& movements, QDate from,
                                                 QDate to)
{
    const DayRange range(from, to);
    QList<Ref<InventoryMovement>> kept;
    for (const Ref<InventoryMovement>& movement : movements) {
        if (movement->costAfter() && range.contains(movement->timestamp()))
            kept.append(movement);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const Ref<InventoryMovement>& a, const Ref<InventoryMovement>& b) {
                         return a->timestamp() > b->timestamp();
                     });

    QList<QStringList> rows;
    for (const Ref<InventoryMovement>& movement : kept) {
        const Ref<Product> product = movement->product();
        QString change;
        if (movement->type() == InventoryMovementType::costChange)
            change = movement->reason().isEmpty() ? QStringLiteral("Cost edited") : movement->reason();
        else
            change = movement->supplier().isEmpty() ? QStringLiteral("Delivery")
                                                    : QStringLiteral("Delivery — ") + movement->supplier();
        const double moved = movement->quantityChange();
        const Ref<User> by = movement->performedBy();
        rows.append({tableTime(movement->timestamp()), product ? product->name() : dash,
                     product ? product->sku() : QString(), change,
                     moved == 0
                         ? QString()
                         : Quantity::format(moved, product ? product->sellingUnit() : SellingUnit::each),
                     moneyOrDash(movement->unitCost()), moneyOrDash(movement->costBefore()),
                     moneyOrDash(movement->costAfter()), by ? by->name() : dash});
    }
    return rows;
}
