#include "startup/appinfo.h"

#include <QList>

#include <algorithm>

namespace {
QList<qint64> versionNumbers(const QString& text)
{
    QList<qint64> numbers;
    for (const QString& piece : text.split(QLatin1Char('.'), Qt::SkipEmptyParts)) {
        bool ok = false;
        const qint64 number = piece.toLongLong(&ok);
        numbers.append(ok ? number : 0);
    }
    return numbers;
}
} // namespace

bool AppInfo::isVersion(const QString& a, const QString& newerThan)
{
    const QList<qint64> left = versionNumbers(a);
    const QList<qint64> right = versionNumbers(newerThan);
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        const qint64 x = left.value(i, 0);
        const qint64 y = right.value(i, 0);
        if (x != y)
            return x > y;
    }
    return false;
}
