#include "selling/saleshistory.h"

#include "records/user.h"
#include "store/record.h"

#include <algorithm>

namespace {

// Below this many candidates a search gathers its sales through the indexes of what it matched
// and sorts them; above it the matches are common enough that reading in date order fills a page
// sooner.
constexpr int gatherLimit = 2000;

const QString columns = QStringLiteral(
    "SELECT s.timestamp, s.id, s.invoiceNumber, s.total, s.statusRaw, s.refundOfSaleID IS NOT NULL, "
    "u.name, c.name FROM ");
const QString joins =
    QStringLiteral(" LEFT JOIN User u ON u.id = s.cashier LEFT JOIN Customer c ON c.id = s.customer");
const QString newestFirst = QStringLiteral(" ORDER BY s.timestamp DESC, s.id DESC LIMIT ?");

struct Clause {
    QStringList parts;
    QVariantList bindings;

    void add(const QString& sql, const QVariantList& values = {})
    {
        parts << sql;
        bindings << values;
    }
    QString sql(const QString& glue = QStringLiteral(" AND ")) const { return parts.join(glue); }
};

QString likePattern(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('%'), QStringLiteral("\\%"))
        .replace(QLatin1Char('_'), QStringLiteral("\\_"));
    return QLatin1Char('%') + escaped + QLatin1Char('%');
}

// Where a search can meet an invoice number. Every number is "INV-", a date and a running number,
// so a search holding any of those letters is anchored at the start and reads as a range of the
// invoice index; one of digits and dashes alone may stand anywhere in it.
struct InvoiceSearch {
    enum class Kind { none, startsWith, anywhere } kind = Kind::none;
    QString prefix;
};

InvoiceSearch invoiceSearch(const QString& text)
{
    static const QString head = QStringLiteral("inv-");
    const QString lowered = text.toLower();
    const auto isNumberPart = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'-'; };
    if (std::all_of(lowered.begin(), lowered.end(), isNumberPart))
        return {InvoiceSearch::Kind::anywhere, {}};
    for (qsizetype skipped = 0; skipped < 3; ++skipped) {
        const QString rest = head.mid(skipped);
        const QString headPart = lowered.left(rest.size());
        if (!rest.startsWith(headPart))
            continue;
        const QString tail = lowered.mid(rest.size());
        if (std::all_of(tail.begin(), tail.end(), isNumberPart))
            return {InvoiceSearch::Kind::startsWith, (head.left(skipped) + lowered).toUpper()};
    }
    return {};
}

// The ways a search can match a sale, each a condition on `s`. Written with `+` before the column
// for a scan in date order, which must not be turned into a search of that column's index.
QList<Clause> searchArms(const QString& text, bool forScan)
{
    const QString column = forScan ? QStringLiteral("+s.") : QStringLiteral("s.");
    QList<Clause> arms;
    const InvoiceSearch invoices = invoiceSearch(text);
    if (invoices.kind == InvoiceSearch::Kind::startsWith) {
        QString past = invoices.prefix;
        past.back() = QChar(past.back().unicode() + 1);
        arms.append({{column + QStringLiteral("invoiceNumber >= ? AND ") + column +
                      QStringLiteral("invoiceNumber < ?")},
                     {invoices.prefix, past}});
    } else if (invoices.kind == InvoiceSearch::Kind::anywhere) {
        arms.append({{column + QStringLiteral("invoiceNumber LIKE ? ESCAPE '\\'")}, {likePattern(text)}});
    }
    arms.append({{column + QStringLiteral("cashier IN (SELECT id FROM User WHERE name LIKE ? ESCAPE '\\')")},
                 {likePattern(text)}});
    arms.append(
        {{column + QStringLiteral("customer IN (SELECT id FROM Customer WHERE name LIKE ? ESCAPE '\\')")},
         {likePattern(text)}});
    return arms;
}

SalesHistory::Row rowOf(const SqliteStatement& statement)
{
    SalesHistory::Row row;
    row.key = {statement.real(0), statement.text(1)};
    row.timestamp = Record::dateFromSeconds(row.key.timestamp);
    row.invoiceNumber = statement.text(2);
    row.total = statement.real(3);
    row.statusRaw = statement.text(4);
    row.isRefund = statement.integer(5) != 0;
    row.cashierName = statement.text(6);
    row.customerName = statement.text(7);
    return row;
}

} // namespace

void SalesHistory::Filter::showSalesOf(const User* viewer)
{
    everyone = viewer && viewer->role() == UserRole::admin;
    cashierID = viewer && !everyone ? viewer->id() : QUuid();
}

SalesHistory::SalesHistory(ModelContext& context)
    : m_context(context)
{
}

QList<SalesHistory::Row> SalesHistory::page(const Filter& filter, const std::optional<Key>& after, int limit)
{
    // Scope and place: the dates, whose sales, and where the last page ended.
    Clause range;
    range.add(QStringLiteral("s.timestamp >= ? AND s.timestamp < ?"),
              {Record::secondsFromDate(filter.startDate.startOfDay()),
               Record::secondsFromDate(filter.endDate.addDays(1).startOfDay())});
    if (after)
        range.add(QStringLiteral("(s.timestamp, s.id) < (?, ?)"), {after->timestamp, after->id});
    Clause where = range;
    if (!filter.everyone) {
        if (filter.cashierID.isNull())
            where.add(QStringLiteral("s.cashier IS NULL"));
        else
            where.add(QStringLiteral("s.cashier = ?"), {Record::uuidText(filter.cashierID)});
    }

    const auto read = [&](const QString& sql, QVariantList bindings) {
        bindings << limit;
        return m_context.rows<Row>(sql, bindings, rowOf);
    };
    if (filter.searchText.isEmpty())
        return read(columns + QStringLiteral("Sale s") + joins + QStringLiteral(" WHERE ") + where.sql() +
                        newestFirst,
                    where.bindings);

    // Few candidates: gathered through the indexes of what matched, then sorted.
    const QList<Clause> arms = searchArms(filter.searchText, false);
    const bool anywhere = invoiceSearch(filter.searchText).kind == InvoiceSearch::Kind::anywhere;
    qint64 candidates = 0;
    for (const Clause& arm : arms) {
        if (anywhere || candidates >= gatherLimit)
            break;
        const QList<qint64> counted = m_context.rows<qint64>(
            QStringLiteral("SELECT COUNT(*) FROM (SELECT 1 FROM Sale s WHERE ") + arm.sql() +
                QStringLiteral(" AND ") + range.sql() + QStringLiteral(" LIMIT ?)"),
            arm.bindings + range.bindings + QVariantList{gatherLimit},
            [](const SqliteStatement& statement) { return statement.integer(0); });
        candidates += counted.value(0);
    }
    if (!anywhere && candidates < gatherLimit) {
        Clause gathered;
        for (const Clause& arm : arms)
            gathered.add(QStringLiteral("SELECT s.id FROM Sale s WHERE ") + arm.sql() +
                             QStringLiteral(" AND ") + range.sql(),
                         arm.bindings + range.bindings);
        return read(columns + QStringLiteral("(") + gathered.sql(QStringLiteral(" UNION ")) +
                        QStringLiteral(") m CROSS JOIN Sale s ON s.id = m.id") + joins +
                        QStringLiteral(" WHERE ") + where.sql() + newestFirst,
                    gathered.bindings + where.bindings);
    }

    // Common matches: read in date order until the page is full.
    Clause matches;
    for (const Clause& arm : searchArms(filter.searchText, true))
        matches.add(QLatin1Char('(') + arm.sql() + QLatin1Char(')'), arm.bindings);
    return read(columns + QStringLiteral("Sale s") + joins + QStringLiteral(" WHERE ") + where.sql() +
                    QStringLiteral(" AND (") + matches.sql(QStringLiteral(" OR ")) + QLatin1Char(')') +
                    newestFirst,
                where.bindings + matches.bindings);
}
