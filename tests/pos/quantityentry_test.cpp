#include "pos/quantityentry.h"

#include <gtest/gtest.h>

namespace {
Ref<Product> soldBy(SellingUnit unit, double price = 12)
{
    auto product = std::make_shared<Product>();
    product->setName(QStringLiteral("Rice"));
    product->setSellingUnit(unit);
    product->setSellingPrice(price);
    return product;
}
} // namespace

TEST(QuantityEntry, AmountsByUnitAndTheHintsThatRefuseThem)
{
    const char* whole = "Enter a whole number above zero.";
    const char* fraction = "Enter an amount above zero, e.g. 1.5.";
    struct Case {
        SellingUnit unit;
        const char* typed;
        double value;
        const char* hint; // null: none
    };
    const Case cases[] = {
        {SellingUnit::kg, "1,5", 1.5, nullptr}, // the scale's decimal comma
        {SellingUnit::kg, " 2.25 ", 2.25, nullptr},
        {SellingUnit::kg, "1.23456", 1.235, nullptr},
        {SellingUnit::litre, "0.5", 0.5, nullptr},
        {SellingUnit::hour, "1.75", 1.75, nullptr},
        {SellingUnit::metre, "0", 0, fraction},
        {SellingUnit::kg, "-1", 0, fraction},
        {SellingUnit::kg, "abc", 0, fraction},
        {SellingUnit::kg, "1e3", 0, fraction},
        {SellingUnit::each, "1.5", 0, whole},
        {SellingUnit::ml, "1.5", 0, whole}, // millilitres and grams are counted whole
        {SellingUnit::g, "250", 250, nullptr},
        {SellingUnit::each, "3", 3, nullptr},
        {SellingUnit::kg, "", 0, nullptr}, // nothing typed yet is no mistake
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.typed) + " " + SellingUnits::raw(c.unit).toStdString());
        QuantityEntry entry(soldBy(c.unit), 12, std::nullopt, QStringLiteral("₵"));
        entry.setText(QString::fromUtf8(c.typed));
        EXPECT_DOUBLE_EQ(entry.value(), c.value);
        EXPECT_EQ(entry.canConfirm(), c.value > 0);
        EXPECT_EQ(entry.hint(), c.hint ? std::optional<QString>(QString::fromUtf8(c.hint)) : std::nullopt);
    }
}
