#pragma once

#include "selling/cart.h"

// What checkout asks of the staff book before anything is written. The book lives above selling,
// so checkout sees only this.
class StaffChecking {
public:
    virtual ~StaffChecking() = default;

    // Throws when a line still needs to say who did it.
    virtual void checkStaff(const Cart& cart) = 0;
};
