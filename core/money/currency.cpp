#include "money/currency.h"

#include <QLocale>

#include <cmath>

QString Currency::format(double amount, const QString& symbol, const QString& code)
{
    Q_UNUSED(code);
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    QString digits = locale.toString(std::abs(amount), 'f', 2);
    if (digits.isEmpty())
        digits = QStringLiteral("0.00");
    // The sign follows the amount, not the digits: -0.001 shows as -₵0.00.
    return (amount < 0 ? QStringLiteral("-") : QString()) + symbol + digits;
}

QString Currency::percentText(double rate)
{
    QString text = QString::asprintf("%.2f", rate * 100.0);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text + u'%';
}
