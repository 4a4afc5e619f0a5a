#include "money/numberentry.h"

#include "money/rounding.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace {
NumberEntry refused(const QString& problem)
{
    return NumberEntry{std::nullopt, problem};
}

// Digits with an optional sign and point only: what QString::toDouble would also read as
// exponents, hex or "inf" is not a typed amount.
std::optional<double> plainNumber(const QString& text)
{
    static const QRegularExpression plain(QStringLiteral("^-?(\\d+\\.?\\d*|\\.\\d+)$"));
    if (!plain.match(text).hasMatch())
        return std::nullopt;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}
} // namespace

NumberEntry NumberEntry::money(const QString& text, int places)
{
    QString typed = text.trimmed();
    for (const QString& sign : {QStringLiteral("GH₵"), QStringLiteral("GHS"), QStringLiteral("₵")}) {
        if (typed.startsWith(sign, Qt::CaseInsensitive)) {
            typed = typed.mid(sign.size()).trimmed();
            break;
        }
    }
    // Spaces of any width between digit groups.
    typed.remove(QRegularExpression(QStringLiteral("[\\s\\x{00A0}\\x{2009}\\x{202F}]")));
    if (typed.contains(QLatin1Char(','))) {
        static const QRegularExpression grouped(QStringLiteral("^-?\\d{1,3}(,\\d{3})+(\\.\\d*)?$"));
        if (!grouped.match(typed).hasMatch())
            return refused(moneyProblem());
        typed.remove(QLatin1Char(','));
    }
    const std::optional<double> value = plainNumber(typed);
    if (!value)
        return refused(moneyProblem());
    const double rounded = Rounding::toPlaces(*value, places);
    if (std::abs(rounded) > moneyMaximum)
        return refused(QStringLiteral("Enter an amount up to 999,999,999.99."));
    return NumberEntry{rounded, {}};
}

NumberEntry NumberEntry::quantity(const QString& text)
{
    const QString typed = text.trimmed().replace(QLatin1Char(','), QLatin1Char('.'));
    const std::optional<double> value = plainNumber(typed);
    if (!value)
        return refused(quantityProblem());
    const double rounded = Rounding::toThousandths(*value);
    if (std::abs(rounded) > quantityMaximum)
        return refused(QStringLiteral("Enter a quantity up to 9,999,999.999."));
    return NumberEntry{rounded, {}};
}
