#include "money/taxcomponent.h"
#include "records/records.h"
#include "support/printers.h"

#include <gtest/gtest.h>

TEST(SaleItemFigures, FollowTheTaxModeAndCompoundTaxIsChargedOnTheBasePlusLevies)
{
    auto item = SaleItem::make(nullptr, 2, 10.00, 4, 0.15, 2.00, false);
    EXPECT_NEAR(item->taxAmount(), 2.70, 1e-12);
    EXPECT_NEAR(item->lineTotal(), 20.70, 1e-12);

    item->setPricesIncludeTax(true);
    EXPECT_DOUBLE_EQ(item->taxAmount(), 18 * 0.15 / 1.15);
    EXPECT_DOUBLE_EQ(item->lineTotal(), 18.00);

    EXPECT_EQ(item->commission(), 0); // nobody did it
    item->setStaffID(QUuid::createUuid());
    item->setCommissionRate(0.1);
    EXPECT_DOUBLE_EQ(item->commission(), 0.1 * (18.00 - 18 * 0.15 / 1.15));

    // Which products count stock, the inventory summary's test checks.
    Product product;
    product.setTaxRate(0.125);
    ASSERT_EQ(product.taxComponents().size(), 1u);
    EXPECT_EQ(product.taxComponents()[0].label, QStringLiteral("Tax (12.5%)"));
    product.setIsTaxable(false);
    EXPECT_TRUE(product.taxComponents().empty());

    auto plain = Tax::make(QStringLiteral("Levy"), 0.1, false, 1);
    auto compound = Tax::make(QStringLiteral("VAT"), 0.05, true, 0);
    auto group = TaxGroup::make(QStringLiteral("Mixed"), {plain, compound}, 0);
    const auto components = group->components();
    ASSERT_EQ(components.size(), 2u);
    EXPECT_EQ(components[0].label, QStringLiteral("VAT (5%)")); // sorted by sortOrder first
    EXPECT_DOUBLE_EQ(components[0].share, 0.055);
    EXPECT_DOUBLE_EQ(components[1].share, 0.1);
}
