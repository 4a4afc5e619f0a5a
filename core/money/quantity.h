#pragma once

#include "records/enums.h"

#include <QString>

class Quantity {
public:
    // To thousandths, without trailing zeros: "2", "1.5", "0.124".
    static QString format(double quantity);
    // With the unit's symbol after a blank ("1.5 kg"); each adds nothing.
    static QString format(double quantity, SellingUnit unit);
};
