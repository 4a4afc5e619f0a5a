#pragma once

// How far two amounts may differ and still count as equal, per kind of comparison.
struct Tolerance {
    static constexpr double payment = 0.01;
    // Credit limits and customer account amounts.
    static constexpr double credit = 0.005;
    static constexpr double discountLimit = 0.004;
    static constexpr double priceChange = 0.005;
    static constexpr double costChange = 0.00005;
};
