#include "reports/salesreader.h"

#include <cmath>

namespace {

// Dates as the record layer reads them, but in UTC: a local date-time works out its zone's offset
// when it is made, which would dominate reading a year.
QDateTime dateFromSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0), Qt::UTC);
}

// A key to look stored text up by, without copying it out of the statement.
QByteArray lookupKey(QByteArrayView utf8)
{
    return QByteArray::fromRawData(utf8.data(), utf8.size());
}

// Each query walks Sale(timestamp) or Sale(voidedAt) and then the sale's own rows through their
// index on "sale", so the rows come in the order asked for without a sort. CROSS JOIN keeps
// SQLite from putting the lines outside.
const QString saleOrder = QStringLiteral(" ORDER BY s.\"timestamp\", s.rowid");

// Finds the sale of each row of a lines or payments query, which come in the same order of sale.
class SaleCursor {
public:
    SaleCursor(QList<ReportSale>& sales, const std::vector<qint64>& rowids)
        : m_sales(sales)
        , m_rowids(rowids)
    {
    }

    ReportSale& of(qint64 rowid)
    {
        while (m_rowids[size_t(m_next)] != rowid) {
            ++m_next;
            Q_ASSERT(m_next < m_sales.size());
        }
        return m_sales[m_next];
    }

private:
    QList<ReportSale>& m_sales;
    const std::vector<qint64>& m_rowids;
    qsizetype m_next = 0;
};

} // namespace

QString SalesReader::SharedTexts::of(QByteArrayView utf8)
{
    const auto found = m_texts.constFind(lookupKey(utf8));
    if (found != m_texts.constEnd())
        return *found;
    return *m_texts.insert(utf8.toByteArray(), QString::fromUtf8(utf8));
}

SalesReader::SalesReader(ModelContext& context)
    : m_context(context)
{
}

QList<ReportSale> SalesReader::sales(const DayRange& days, Parts parts)
{
    readProductsAndCashiers();
    const QVariantList bounds{days.startSeconds(), days.endSeconds()};
    QList<ReportSale> rungUp =
        read(QStringLiteral("s.\"timestamp\" >= ?1 AND s.\"timestamp\" < ?2"), bounds, parts);
    // "+": Sale(voidedAt) finds the few voided sales; Sale(timestamp) would walk everything before.
    const QList<ReportSale> voidedBefore =
        read(QStringLiteral("s.\"voidedAt\" >= ?1 AND s.\"voidedAt\" < ?2 AND +s.\"timestamp\" < ?1"), bounds,
             parts);
    return voidedBefore.isEmpty() ? rungUp : voidedBefore + rungUp;
}

QList<ReportAccountPayment> SalesReader::accountPayments(const DayRange& days)
{
    return m_context.rows<ReportAccountPayment>(
        QStringLiteral("SELECT \"timestamp\", \"methodRaw\", \"amount\" FROM \"CustomerPayment\" WHERE "
                       "\"timestamp\" >= ? AND \"timestamp\" < ? ORDER BY \"timestamp\", rowid"),
        {days.startSeconds(), days.endSeconds()}, [this](const SqliteStatement& row) {
            return ReportAccountPayment{dateFromSeconds(row.real(0)), m_texts.of(row.utf8(1)), row.real(2)};
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
            sale.statusRaw = m_texts.of(row.utf8(2));
            sale.subtotal = row.real(3);
            sale.lineDiscountTotal = row.real(4);
            sale.saleDiscount = row.real(5);
            sale.pointsDiscount = row.real(6);
            sale.taxTotal = row.real(7);
            sale.total = row.real(8);
            sale.isRefund = row.integer(9) != 0;
            if (!row.isNull(10))
                sale.voidedAt = dateFromSeconds(row.real(10));
            sale.cashier = m_cashiers.value(lookupKey(row.utf8(11)));
            return sale;
        });
    if (sales.isEmpty())
        return sales;

    // Lines and payments go straight to their sale as they are read.
    const auto eachRowOf = [&](const char* table, const char* columns, auto place) {
        SaleCursor cursor(sales, rowids);
        m_context.forEachRow(
            QStringLiteral("SELECT s.rowid, %1 FROM \"Sale\" s CROSS JOIN \"%2\" r ON r.\"sale\" = "
                           "s.\"id\" WHERE ")
                    .arg(QLatin1String(columns), QLatin1String(table)) +
                where + saleOrder + QStringLiteral(", r.rowid"),
            bindings, [&](const SqliteStatement& row) { place(cursor.of(row.integer(0)), row); });
    };
    if (parts.items) {
        eachRowOf(
            "SaleItem",
            "r.\"product\", r.\"quantity\", r.\"unitPrice\", r.\"unitCostSnapshot\", r.\"taxRateSnapshot\", "
            "r.\"lineDiscount\", r.\"pricesIncludeTax\", r.\"productTypeRaw\", r.\"taxComponentsRaw\"",
            [this](ReportSale& sale, const SqliteStatement& row) {
                ReportItem& item = sale.items.emplaceBack();
                item.product = m_products.value(lookupKey(row.utf8(1)));
                item.quantity = row.real(2);
                item.unitPrice = row.real(3);
                item.unitCostSnapshot = row.real(4);
                item.taxRateSnapshot = row.real(5);
                item.lineDiscount = row.real(6);
                item.pricesIncludeTax = row.integer(7) != 0;
                item.productTypeRaw = m_texts.of(row.utf8(8));
                item.taxComponentsRaw = m_texts.of(row.utf8(9));
            });
    }
    if (parts.payments) {
        eachRowOf("Payment", "r.\"methodRaw\", r.\"amount\"",
                  [this](ReportSale& sale, const SqliteStatement& row) {
                      sale.payments.append({m_texts.of(row.utf8(1)), row.real(2)});
                  });
    }
    return sales;
}

void SalesReader::readProductsAndCashiers()
{
    m_products.clear();
    m_context.forEachRow(
        QStringLiteral("SELECT p.\"id\", p.\"name\", p.\"sku\", p.\"productTypeRaw\", p.\"sellingUnitRaw\", "
                       "c.\"name\" FROM \"Product\" p LEFT JOIN \"Category\" c ON c.\"id\" = p.\"category\""),
        {}, [this](const SqliteStatement& row) {
            auto product = std::make_shared<ReportProduct>();
            product->id = QUuid::fromString(row.text(0));
            product->name = row.text(1);
            product->sku = row.text(2);
            product->productTypeRaw = row.text(3);
            product->sellingUnitRaw = row.text(4);
            if (!row.isNull(5))
                product->categoryName = row.text(5);
            m_products.insert(row.utf8(0).toByteArray(), product);
        });

    m_cashiers.clear();
    m_context.forEachRow(
        QStringLiteral("SELECT \"id\", \"name\" FROM \"User\""), {}, [this](const SqliteStatement& row) {
            m_cashiers.insert(row.utf8(0).toByteArray(), std::make_shared<const ReportCashier>(ReportCashier{
                                                             QUuid::fromString(row.text(0)), row.text(1)}));
        });
}
