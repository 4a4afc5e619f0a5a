#pragma once

// The one place money and quantities are rounded: scale, round halves away from zero, scale back,
// all in double. There is no decimal type.
class Rounding {
public:
    static double toCents(double value);
    static double toThousandths(double value);
    static double toPlaces(double value, int places);
};
