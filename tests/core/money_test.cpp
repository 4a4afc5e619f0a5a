#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"
#include "money/rounding.h"

#include <gtest/gtest.h>

#include <string>

// A value and the text it must give.
struct TextCase {
    double value;
    const char* text;
};

TEST(Rounding, HalvesGoAwayFromZeroOnTheScaledDouble)
{
    // What the rule gives depends on the product in binary: 2.675 * 100 is exactly 267.5 and goes up,
    // while 1.005 * 100 is 100.49999999999999 and goes down.
    const struct {
        double value, cents;
    } cases[] = {
        {0.125, 0.13}, {-0.125, -0.13}, {2.675, 2.68}, {-2.675, -2.68},
        {1.005, 1.0},  {-1.005, -1.0},  {8.345, 8.35}, {1234.5649, 1234.56},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Rounding::toCents(c.value), c.cents) << c.value;

    EXPECT_EQ(Rounding::toThousandths(0.1235), 0.124);
    EXPECT_EQ(Rounding::toThousandths(1.0005), 1.001);
    EXPECT_EQ(Rounding::toThousandths(-0.0005), -0.001);
    EXPECT_EQ(Rounding::toPlaces(-2.5, 0), -3.0);
    EXPECT_EQ(Rounding::toPlaces(0.025 + 0.025 + 0.15, 6), 0.2);
    EXPECT_EQ(Rounding::toPlaces(1.23455, 4), 1.2346);
}

TEST(Currency, FormatsWithGroupingAndSign)
{
    const TextCase cases[] = {
        {1234.5, "₵1,234.50"},
        {-1234.5, "-₵1,234.50"},
        {1234567.891, "₵1,234,567.89"},
        {999.999, "₵1,000.00"},
        {0, "₵0.00"},
        {-0.0, "₵0.00"},
        {-0.001, "-₵0.00"}, // below zero even though the digits round to nothing
    };
    for (const auto& c : cases)
        EXPECT_EQ(Currency::format(c.value, Currency::fixedSign).toStdString(), c.text) << c.value;

    EXPECT_EQ(Currency::format(5, "GH₵", "USD").toStdString(), "GH₵5.00");
}

TEST(Quantity, FormatsToThousandthsWithoutTrailingZeros)
{
    const TextCase cases[] = {
        {1.5, "1.5"},  {2, "2"},         {1000, "1000"}, {0.1235, "0.124"},
        {1.0004, "1"}, {-1.25, "-1.25"}, {0.12, "0.12"}, {-0.0001, "0"}, // not "-0"
    };
    for (const auto& c : cases)
        EXPECT_EQ(Quantity::format(c.value).toStdString(), c.text) << c.value;

    EXPECT_EQ(Quantity::format(1.5, SellingUnit::kg).toStdString(), "1.5 kg");
    EXPECT_EQ(Quantity::format(2, SellingUnit::litre).toStdString(), "2 L");
    EXPECT_EQ(Quantity::format(3, SellingUnit::each).toStdString(), "3");
}

TEST(NumberEntry, MoneyAcceptsWhatPeopleTypeAndRefusesWhatIsNotANumber)
{
    const struct {
        const char* typed;
        std::optional<double> amount;
    } cases[] = {
        {"1,250.00", 1250.0},     // the thousands separator once read as 0
        {"1,000", 1000.0},        // a credit limit of "1,000" once meant "no limit"
        {"1 250", 1250.0},        {"₵1,250.00", 1250.0}, {"GHS 12.5", 12.5}, {" 7 ", 7.0},
        {"0.005", 0.01},          // rounded to cents, halves away from zero
        {"1,234,567.891", 1234567.89},
        {".5", 0.5},              {"-3", -3.0},
        {"12,50", std::nullopt},  // either 12.50 or 1,250: refused rather than guessed
        {"abc", std::nullopt},    {"45O", std::nullopt}, // a letter O, cut to "45" by a lax reader
        {"", std::nullopt},       {"1e3", std::nullopt}, {"inf", std::nullopt}, {"0x10", std::nullopt},
        {"1,2345", std::nullopt}, {"1000000000", std::nullopt}, // beyond the cap
    };
    for (const auto& c : cases) {
        const NumberEntry entry = NumberEntry::money(QString::fromUtf8(c.typed));
        EXPECT_EQ(entry.value, c.amount) << c.typed;
        EXPECT_EQ(entry.problem.isEmpty(), c.amount.has_value()) << c.typed;
    }
    EXPECT_EQ(NumberEntry::money(QStringLiteral("2.33336"), NumberEntry::unitCostPlaces).value, 2.3334);
    EXPECT_EQ(NumberEntry::money(QStringLiteral("999,999,999.99")).value, 999999999.99);
}
