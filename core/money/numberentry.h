#pragma once

#include <QString>

#include <optional>

// A number as a person typed it into a field: the value, or why there is none. Text that is not
// wholly a number is refused, never read as 0 or cut to the part that reads.
struct NumberEntry {
    static constexpr double moneyMaximum = 999'999'999.99;
    static constexpr double quantityMaximum = 9'999'999.999;
    static constexpr int centPlaces = 2;
    static constexpr int unitCostPlaces = 4;

    std::optional<double> value;
    QString problem; // empty when there is a value

    bool isValid() const { return value.has_value(); }

    // Money in en_US writing: "1,250.00", "1 250", "₵1,250.00", "GHS 12.5", "-3". Grouping commas
    // must stand between groups of three ("12,50" is refused, as it could mean either); rounded to
    // `places`.
    static NumberEntry money(const QString& text, int places = centPlaces);
    // A quantity: "," is the decimal point, as on the scale's display; rounded to thousandths.
    static NumberEntry quantity(const QString& text);

    static QString moneyProblem() { return QStringLiteral("Enter an amount such as 1,250.00."); }
    static QString quantityProblem() { return QStringLiteral("Enter a quantity such as 2.5."); }
};
