#include "store/query.h"

#include "store/record.h"

Condition Condition::combine(const Condition& a, const Condition& b, const char* op)
{
    if (a.isEmpty())
        return b;
    if (b.isEmpty())
        return a;
    return {QStringLiteral("(%1) %2 (%3)").arg(a.m_sql, QLatin1String(op), b.m_sql),
            a.m_bindings + b.m_bindings};
}

Condition operator!(const Condition& a)
{
    return {QStringLiteral("NOT (%1)").arg(a.m_sql), a.m_bindings};
}

QVariant toStoredValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return Record::secondsFromDate(value.toDateTime());
    case QMetaType::QUuid:
        return Record::uuidText(value.toUuid());
    default:
        return value;
    }
}

QVariant toStoredValue(const QDateTime& value)
{
    return Record::secondsFromDate(value);
}

QVariant toStoredValue(const QUuid& value)
{
    return Record::uuidText(value);
}

QVariant toStoredValue(const std::shared_ptr<Record>& value)
{
    return value ? QVariant(value->idText()) : QVariant();
}

Condition Column::contains(const QString& text) const
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('%'), QStringLiteral("\\%"))
        .replace(QLatin1Char('_'), QStringLiteral("\\_"));
    return {quoted() + QStringLiteral(" LIKE ? ESCAPE '\\'"),
            {QLatin1Char('%') + escaped + QLatin1Char('%')}};
}

Condition Column::in(const QVariantList& values) const
{
    if (values.isEmpty())
        return {QStringLiteral("0"), {}};
    QVariantList stored;
    stored.reserve(values.size());
    for (const QVariant& value : values)
        stored.append(toStoredValue(value));
    QStringList marks(values.size(), QStringLiteral("?"));
    return {quoted() + QStringLiteral(" IN (") + marks.join(QLatin1Char(',')) + QLatin1Char(')'), stored};
}
