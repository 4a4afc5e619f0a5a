#include "money/quantity.h"

#include "money/rounding.h"

#include <cmath>

QString Quantity::format(double quantity)
{
    const double rounded = Rounding::toThousandths(quantity);
    if (rounded == std::trunc(rounded))
        return QString::number(rounded, 'f', 0);
    QString text = QString::asprintf("%.3f", rounded);
    while (text.endsWith(u'0'))
        text.chop(1);
    return text;
}

QString Quantity::format(double quantity, SellingUnit unit)
{
    const QString symbol = SellingUnits::symbol(unit);
    return symbol.isEmpty() ? format(quantity) : format(quantity) + u' ' + symbol;
}
