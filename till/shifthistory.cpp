#include "till/shifthistory.h"

#include "store/record.h"

namespace {
std::optional<double> optionalReal(const SqliteStatement& row, int column)
{
    return row.isNull(column) ? std::nullopt : std::optional<double>(row.real(column));
}

ShiftHistory::Row rowOf(const SqliteStatement& statement)
{
    ShiftHistory::Row row;
    row.key = {statement.real(0), statement.text(1)};
    row.openedAt = Record::dateFromSeconds(row.key.openedAt);
    if (!statement.isNull(2))
        row.closedAt = Record::dateFromSeconds(statement.real(2));
    row.expectedCash = optionalReal(statement, 3);
    row.countedCash = optionalReal(statement, 4);
    row.variance = optionalReal(statement, 5);
    row.notes = statement.text(6);
    row.cashierName = statement.text(7);
    return row;
}
} // namespace

ShiftHistory::ShiftHistory(ModelContext& context)
    : m_context(context)
{
}

QList<ShiftHistory::Row> ShiftHistory::page(const std::optional<Key>& after, const QUuid& exceptID, int limit)
{
    QString sql = QStringLiteral(
        "SELECT t.openedAt, t.id, t.closedAt, t.expectedCash, t.countedCash, t.variance, t.notes, u.name "
        "FROM TillShift t LEFT JOIN User u ON u.id = t.cashier WHERE t.id != ?");
    QVariantList bindings{exceptID.isNull() ? QString() : Record::uuidText(exceptID)};
    if (after) {
        // Bounded from above on the openedAt index, so the last page costs what the first does.
        sql += QStringLiteral(" AND t.openedAt <= ? AND (t.openedAt < ? OR t.id < ?)");
        bindings << after->openedAt << after->openedAt << after->id;
    }
    sql += QStringLiteral(" ORDER BY t.openedAt DESC, t.id DESC LIMIT ?");
    bindings << limit;
    return m_context.rows<Row>(sql, bindings, rowOf);
}
