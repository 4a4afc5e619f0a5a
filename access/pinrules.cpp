#include "access/pinrules.h"

#include <QList>
#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>

int characterCount(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    return count;
}

bool PinRules::isValid(const QString& pin)
{
    const int count = characterCount(pin);
    if (count < 4 || count > 6)
        return false;
    const QList<uint> codePoints = QStringView(pin).toUcs4();
    return std::all_of(codePoints.begin(), codePoints.end(),
                       [](uint c) { return QChar::isNumber(char32_t(c)); });
}

QString PinRules::trimmed(const QString& text)
{
    const auto isBlank = [](QChar c) {
        return c == QLatin1Char('\t') || c.category() == QChar::Separator_Space;
    };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}
