#include "money/rounding.h"

#include <QtGlobal>

#include <cmath>

double Rounding::toCents(double value)
{
    return std::round(value * 100.0) / 100.0;
}

double Rounding::toThousandths(double value)
{
    return std::round(value * 1000.0) / 1000.0;
}

double Rounding::toPlaces(double value, int places)
{
    // Every power of ten up to 10^22 is exact in a double, so the scale adds no error of its own.
    Q_ASSERT(places >= 0 && places <= 22);
    double scale = 1.0;
    for (int i = 0; i < places; ++i)
        scale *= 10.0;
    return std::round(value * scale) / scale;
}
