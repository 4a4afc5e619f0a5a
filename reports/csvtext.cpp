#include "reports/csvtext.h"

QString CSVText::cell(const QString& text)
{
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n'))
        return text;
    QString quoted = text;
    quoted.replace(u'"', QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

QString CSVText::lines(const QList<QStringList>& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        QStringList cells;
        cells.reserve(row.size());
        for (const QString& value : row)
            cells.append(cell(value));
        text += cells.join(u',') + u'\n';
    }
    return text;
}
