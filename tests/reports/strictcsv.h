#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

// Reads CSV by the grammar of RFC 4180 and refuses all it doesn't allow: a quote in an unquoted
// field, anything but a comma or the line's end after a closing quote, a quoted field left open, a
// carriage return outside quotes, a last line without its end, records of unequal width. Lines end
// in a line feed alone, as the accounting imports take them.
inline std::variant<QList<QStringList>, QString> readStrictCSV(const QString& text)
{
    QList<QStringList> records;
    QStringList record;
    qsizetype at = 0;
    const qsizetype size = text.size();
    while (at < size) {
        QString field;
        if (text[at] == u'"') {
            ++at;
            for (;;) {
                if (at >= size)
                    return QStringLiteral("a quoted field is never closed");
                if (text[at] != u'"') {
                    field += text[at++];
                } else if (at + 1 < size && text[at + 1] == u'"') {
                    field += u'"';
                    at += 2;
                } else {
                    ++at;
                    break;
                }
            }
            if (at < size && text[at] != u',' && text[at] != u'\n')
                return QStringLiteral("text after a closing quote at %1").arg(at);
        } else {
            while (at < size && text[at] != u',' && text[at] != u'\n') {
                if (text[at] == u'"' || text[at] == u'\r')
                    return QStringLiteral("a quote or carriage return in an unquoted field at %1").arg(at);
                field += text[at++];
            }
        }
        if (at >= size)
            return QStringLiteral("the last line has no line feed");
        record << field;
        if (text[at++] == u'\n') {
            if (!records.isEmpty() && records.first().size() != record.size())
                return QStringLiteral("line %1 has %2 fields, the first %3")
                    .arg(records.size() + 1)
                    .arg(record.size())
                    .arg(records.first().size());
            records << record;
            record.clear();
        }
    }
    return records;
}
