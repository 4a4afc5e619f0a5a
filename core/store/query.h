#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>
#include <QVariant>

#include <memory>
#include <optional>

class Record;

// A filter compiled to SQL with bound parameters; values are never spliced into the text.
class Condition {
public:
    Condition() = default;
    Condition(QString sql, QVariantList bindings)
        : m_sql(std::move(sql))
        , m_bindings(std::move(bindings))
    {
    }

    bool isEmpty() const { return m_sql.isEmpty(); }
    const QString& sql() const { return m_sql; }
    const QVariantList& bindings() const { return m_bindings; }

    friend Condition operator&&(const Condition& a, const Condition& b) { return combine(a, b, "AND"); }
    friend Condition operator||(const Condition& a, const Condition& b) { return combine(a, b, "OR"); }
    friend Condition operator!(const Condition& a);

private:
    static Condition combine(const Condition& a, const Condition& b, const char* op);

    QString m_sql;
    QVariantList m_bindings;
};

// Turns what a caller compares with into the stored form: dates to seconds, ids and records to
// upper-case UUID text, flags to 0/1.
QVariant toStoredValue(const QVariant& value);
QVariant toStoredValue(const QDateTime& value);
QVariant toStoredValue(const QUuid& value);
QVariant toStoredValue(const std::shared_ptr<Record>& value);
template <class T> QVariant toStoredValue(const std::shared_ptr<T>& value)
{
    return toStoredValue(std::static_pointer_cast<Record>(value));
}
inline QVariant toStoredValue(const char* value)
{
    return QString::fromUtf8(value);
}
inline QVariant toStoredValue(const QString& value)
{
    return value;
}
inline QVariant toStoredValue(bool value)
{
    return value;
}
inline QVariant toStoredValue(int value)
{
    return qint64(value);
}
inline QVariant toStoredValue(qint64 value)
{
    return value;
}
inline QVariant toStoredValue(double value)
{
    return value;
}

struct Column {
    const char* name;

    QString quoted() const { return QLatin1Char('"') + QLatin1String(name) + QLatin1Char('"'); }

    Condition isNull() const { return {quoted() + QStringLiteral(" IS NULL"), {}}; }
    Condition isNotNull() const { return {quoted() + QStringLiteral(" IS NOT NULL"), {}}; }
    // Case-insensitive "contains" for search fields; % and _ in the text are matched literally.
    Condition contains(const QString& text) const;
    Condition in(const QVariantList& values) const;

    template <class V> Condition compare(const char* op, const V& value) const
    {
        const QVariant stored = toStoredValue(value);
        if (stored.isNull() && (op == std::string_view("=") || op == std::string_view("!=")))
            return op == std::string_view("=") ? isNull() : isNotNull();
        return {quoted() + QLatin1Char(' ') + QLatin1String(op) + QStringLiteral(" ?"), {stored}};
    }
    template <class V> Condition operator==(const V& v) const { return compare("=", v); }
    template <class V> Condition operator!=(const V& v) const { return compare("!=", v); }
    template <class V> Condition operator<(const V& v) const { return compare("<", v); }
    template <class V> Condition operator<=(const V& v) const { return compare("<=", v); }
    template <class V> Condition operator>(const V& v) const { return compare(">", v); }
    template <class V> Condition operator>=(const V& v) const { return compare(">=", v); }
};

struct SortDescriptor {
    Column column;
    bool ascending = true;
};
inline SortDescriptor ascending(Column column)
{
    return {column, true};
}
inline SortDescriptor descending(Column column)
{
    return {column, false};
}

struct FetchDescriptor {
    Condition filter;
    QList<SortDescriptor> sort;
    int limit = -1; // none
    int offset = 0;

    FetchDescriptor() = default;
    FetchDescriptor(Condition where) // NOLINT: a bare condition reads as a fetch
        : filter(std::move(where))
    {
    }
    FetchDescriptor& sortedBy(SortDescriptor by)
    {
        sort.append(by);
        return *this;
    }
    FetchDescriptor& limitedTo(int count, int skip = 0)
    {
        limit = count;
        offset = skip;
        return *this;
    }
};
