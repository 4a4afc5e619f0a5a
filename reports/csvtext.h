#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The CSV of the journal files and report exports: a cell holding a comma, a double quote or a
// line feed is wrapped in double quotes with its quotes doubled; cells are joined by commas and
// every line, the last too, ends in a line feed.
class CSVText {
public:
    static QString cell(const QString& text);
    static QString lines(const QList<QStringList>& rows);
};
