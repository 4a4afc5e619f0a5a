#include "reports/salesreader.h"

#include <cmath>

namespace {

// Dates as the record layer reads them, but in UTC: a local date-time works out its zone's offset
// when it is made, which would dominate reading a year.
QDateTime dateFromSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0), Qt::UTC);
}

// Each query walks Sale(timestamp) or Sale(voidedAt) and then the sale's own rows through their
// index on "sale", so the rows come in the order asked for without a sort. CROSS JOIN keeps
// SQLite from putting the lines outside.
const QString saleOrder = QStringLiteral(" ORDER BY s.\"timestamp\", s.rowid");

struct ItemRow {
    qint64 sale;
    ReportItem item;
};

struct PaymentRow {
    qint64 sale;
    ReportPayment payment;
};

// Hands each row to its sale; rows and sales come in the same order of sale.
template <class Row, class Add>
void distribute(const QList<Row>& rows, const std::vector<qint64>& saleRowids, QList<ReportSale>& sales,
                Add add)
{
    qsizetype next = 0;
    for (const Row& row : rows) {
        while (saleRowids[size_t(next)] != row.sale)
            ++next;
        add(sales[next], row);
    }
}

} // namespace

SalesReader::SalesReader(ModelContext& context)
    : m_context(context)
{
}

QList<ReportSale> SalesReader::sales(const DayRange& days, Parts parts)
{
    readProductsAndCashiers();
    const QVariantList bounds{days.startSeconds(), days.endSeconds()};
    // "+": Sale(voidedAt) finds the few voided sales; Sale(timestamp) would walk everything before.
    QList<ReportSale> found =
        read(QStringLiteral("s.\"voidedAt\" >= ?1 AND s.\"voidedAt\" < ?2 AND +s.\"timestamp\" < ?1"), bounds,
             parts);
    found.append(read(QStringLiteral("s.\"timestamp\" >= ?1 AND s.\"timestamp\" < ?2"), bounds, parts));
    return found;
}

QList<ReportAccountPayment> SalesReader::accountPayments(const DayRange& days)
{
    return m_context.rows<ReportAccountPayment>(
        QStringLiteral("SELECT \"timestamp\", \"methodRaw\", \"amount\" FROM \"CustomerPayment\" WHERE "
                       "\"timestamp\" >= ? AND \"timestamp\" < ? ORDER BY \"timestamp\", rowid"),
        {days.startSeconds(), days.endSeconds()}, [](const SqliteStatement& row) {
            return ReportAccountPayment{dateFromSeconds(row.real(0)), row.text(1), row.real(2)};
        });
}

QList<ReportSale> SalesReader::read(const QString& where, const QVariantList& bindings, Parts parts)
{
    std::vector<qint64> rowids;
    QList<ReportSale> sales = m_context.rows<ReportSale>(
        QStringLiteral(
            "SELECT s.rowid, s.\"timestamp\", s.\"statusRaw\", s.\"subtotal\", s.\"lineDiscountTotal\", "
            "s.\"saleDiscount\", s.\"pointsDiscount\", s.\"taxTotal\", s.\"total\", s.\"refundOfSaleID\" "
            "IS NOT NULL, s.\"voidedAt\", s.\"cashier\" FROM \"Sale\" s WHERE ") +
            where + saleOrder,
        bindings, [&](const SqliteStatement& row) {
            rowids.push_back(row.integer(0));
            ReportSale sale;
            sale.timestamp = dateFromSeconds(row.real(1));
            sale.statusRaw = row.text(2);
            sale.subtotal = row.real(3);
            sale.lineDiscountTotal = row.real(4);
            sale.saleDiscount = row.real(5);
            sale.pointsDiscount = row.real(6);
            sale.taxTotal = row.real(7);
            sale.total = row.real(8);
            sale.isRefund = row.integer(9) != 0;
            if (!row.isNull(10))
                sale.voidedAt = dateFromSeconds(row.real(10));
            sale.cashier = m_cashiers.value(row.text(11));
            return sale;
        });
    if (sales.isEmpty())
        return sales;

    if (parts.items) {
        const QList<ItemRow> items = m_context.rows<ItemRow>(
            QStringLiteral(
                "SELECT s.rowid, i.\"product\", i.\"quantity\", i.\"unitPrice\", i.\"unitCostSnapshot\", "
                "i.\"taxRateSnapshot\", i.\"lineDiscount\", i.\"pricesIncludeTax\", i.\"productTypeRaw\", "
                "i.\"taxComponentsRaw\" FROM \"Sale\" s CROSS JOIN \"SaleItem\" i ON i.\"sale\" = "
                "s.\"id\" WHERE ") +
                where + saleOrder + QStringLiteral(", i.rowid"),
            bindings, [this](const SqliteStatement& row) {
                ItemRow read{row.integer(0), {}};
                ReportItem& item = read.item;
                item.product = m_products.value(row.text(1));
                item.quantity = row.real(2);
                item.unitPrice = row.real(3);
                item.unitCostSnapshot = row.real(4);
                item.taxRateSnapshot = row.real(5);
                item.lineDiscount = row.real(6);
                item.pricesIncludeTax = row.integer(7) != 0;
                item.productTypeRaw = row.text(8);
                item.taxComponentsRaw = row.text(9);
                return read;
            });
        distribute(items, rowids, sales,
                   [](ReportSale& sale, const ItemRow& row) { sale.items.append(row.item); });
    }
    if (parts.payments) {
        const QList<PaymentRow> payments = m_context.rows<PaymentRow>(
            QStringLiteral(
                "SELECT s.rowid, p.\"methodRaw\", p.\"amount\" FROM \"Sale\" s CROSS JOIN \"Payment\" p "
                "ON p.\"sale\" = s.\"id\" WHERE ") +
                where + saleOrder + QStringLiteral(", p.rowid"),
            bindings, [](const SqliteStatement& row) {
                return PaymentRow{row.integer(0), {row.text(1), row.real(2)}};
            });
        distribute(payments, rowids, sales,
                   [](ReportSale& sale, const PaymentRow& row) { sale.payments.append(row.payment); });
    }
    return sales;
}

void SalesReader::readProductsAndCashiers()
{
    m_products.clear();
    for (auto& [id, product] : m_context.rows<std::pair<QString, std::shared_ptr<const ReportProduct>>>(
             QStringLiteral(
                 "SELECT p.\"id\", p.\"name\", p.\"sku\", p.\"productTypeRaw\", p.\"sellingUnitRaw\", "
                 "c.\"name\" FROM \"Product\" p LEFT JOIN \"Category\" c ON c.\"id\" = p.\"category\""),
             {}, [](const SqliteStatement& row) {
                 auto product = std::make_shared<ReportProduct>();
                 product->id = QUuid::fromString(row.text(0));
                 product->name = row.text(1);
                 product->sku = row.text(2);
                 product->productTypeRaw = row.text(3);
                 product->sellingUnitRaw = row.text(4);
                 if (!row.isNull(5))
                     product->categoryName = row.text(5);
                 return std::pair<QString, std::shared_ptr<const ReportProduct>>(row.text(0), product);
             }))
        m_products.insert(id, product);

    m_cashiers.clear();
    for (auto& [id, cashier] : m_context.rows<std::pair<QString, std::shared_ptr<const ReportCashier>>>(
             QStringLiteral("SELECT \"id\", \"name\" FROM \"User\""), {}, [](const SqliteStatement& row) {
                 return std::pair<QString, std::shared_ptr<const ReportCashier>>(
                     row.text(0), std::make_shared<const ReportCashier>(
                                      ReportCashier{QUuid::fromString(row.text(0)), row.text(1)}));
             }))
        m_cashiers.insert(id, cashier);
}
