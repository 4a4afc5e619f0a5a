#include "selling/saleshistory.h"

#include "records/user.h"
#include "store/record.h"

#include <algorithm>

namespace {

// Below this many candidates a search reads its sales through the indexes of what it matched;
// above it the matches are common enough that reading in date order fills a page sooner.
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
    friend Clause operator+(Clause a, const Clause& b)
    {
        a.parts << b.parts;
        a.bindings << b.bindings;
        return a;
    }
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

// The dates, and what comes after the key: both bound the timestamp from above, and a page after
// a key starts at the key itself, so that paging deep costs what the first page does.
Clause placeOf(const SalesHistory::Filter& filter, const std::optional<SalesHistory::Key>& after,
               const QString& column)
{
    const QString timestamp = column + QStringLiteral("timestamp");
    Clause place;
    place.add(timestamp + QStringLiteral(" >= ?"), {Record::secondsFromDate(filter.startDate.startOfDay())});
    const double end = Record::secondsFromDate(filter.endDate.addDays(1).startOfDay());
    if (after && after->timestamp < end)
        place.add(QStringLiteral("%1 <= ? AND (%1 < ? OR %2id < ?)").arg(timestamp, column),
                  {after->timestamp, after->timestamp, after->id});
    else
        place.add(timestamp + QStringLiteral(" < ?"), {end});
    return place;
}

// Whose sales: everyone's adds nothing.
Clause scopeOf(const SalesHistory::Filter& filter, const QString& column)
{
    Clause scope;
    if (filter.everyone)
        return scope;
    if (filter.cashierID.isNull())
        scope.add(column + QStringLiteral("cashier IS NULL"));
    else
        scope.add(column + QStringLiteral("cashier = ?"), {Record::uuidText(filter.cashierID)});
    return scope;
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
    // The dates, where the last page ended and whose sales, as bounds of the date index; `alone`
    // holds the same as filters only, for searches that read through the index of what they matched.
    const Clause where = placeOf(filter, after, QStringLiteral("s.")) + scopeOf(filter, QStringLiteral("s."));
    const Clause alone =
        placeOf(filter, after, QStringLiteral("+s.")) + scopeOf(filter, QStringLiteral("+s."));
    const auto read = [&](const QString& conditions, QVariantList bindings) {
        bindings << limit;
        return m_context.rows<Row>(columns + QStringLiteral("Sale s") + joins + QStringLiteral(" WHERE ") +
                                       conditions + newestFirst,
                                   bindings, rowOf);
    };
    if (filter.searchText.isEmpty())
        return read(where.sql(), where.bindings);

    // Few candidates: each way of matching reads its newest through its own index, and the pages
    // are merged. A way that matches nothing is read no further.
    const QList<Clause> arms = searchArms(filter.searchText, false);
    bool common = invoiceSearch(filter.searchText).kind == InvoiceSearch::Kind::anywhere;
    qint64 candidates = 0;
    QList<const Clause*> matching;
    for (const Clause& arm : arms) {
        if (common)
            break;
        const qint64 found =
            m_context
                .rows<qint64>(QStringLiteral("SELECT COUNT(*) FROM (SELECT 1 FROM Sale s WHERE ") +
                                  arm.sql() + QStringLiteral(" AND ") + alone.sql() +
                                  QStringLiteral(" LIMIT ?)"),
                              arm.bindings + alone.bindings + QVariantList{gatherLimit},
                              [](const SqliteStatement& statement) { return statement.integer(0); })
                .value(0);
        if (found > 0)
            matching.append(&arm);
        candidates += found;
        common = candidates >= gatherLimit;
    }
    if (!common) {
        QList<Row> merged;
        for (const Clause* arm : std::as_const(matching))
            merged << read(arm->sql() + QStringLiteral(" AND ") + alone.sql(),
                           arm->bindings + alone.bindings);
        std::sort(merged.begin(), merged.end(), [](const Row& a, const Row& b) {
            return a.key.timestamp != b.key.timestamp ? a.key.timestamp > b.key.timestamp
                                                      : a.key.id > b.key.id;
        });
        // A sale matched two ways comes twice, side by side.
        merged.erase(std::unique(merged.begin(), merged.end(),
                                 [](const Row& a, const Row& b) { return a.key.id == b.key.id; }),
                     merged.end());
        return merged.mid(0, limit);
    }

    // Common matches: read in date order until the page is full.
    Clause matches;
    for (const Clause& arm : searchArms(filter.searchText, true))
        matches.add(QLatin1Char('(') + arm.sql() + QLatin1Char(')'), arm.bindings);
    return read(where.sql() + QStringLiteral(" AND (") + matches.sql(QStringLiteral(" OR ")) +
                    QLatin1Char(')'),
                where.bindings + matches.bindings);
}
