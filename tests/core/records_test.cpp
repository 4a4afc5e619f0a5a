#include "money/taxcomponent.h"
#include "records/records.h"
#include "support/printers.h"

#include <gtest/gtest.h>

TEST(SaleItemFigures, FollowTheTaxModeTheLineWasSoldIn)
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
}

TEST(SaleItemSnapshot, CopiesTheProduct)
{
    auto product = std::make_shared<Product>();
    product->setSku(QStringLiteral("PM-400"));
    product->setSellingUnit(SellingUnit::kg);
    product->setTaxRate(0.15);
    auto item = SaleItem::make(product, 1, 25, 18, 0.15, 0, false);
    EXPECT_EQ(QStringList({item->skuSnapshot(), item->sellingUnitRaw(), item->taxComponentsRaw()}),
              (QStringList{"PM-400", "kg", "Tax (15%)|0.15"}));
    EXPECT_EQ(SaleItem::make(nullptr, 1, 1, 0, 0, 0, false)->taxComponentsRaw(), QString());
}

TEST(ProductFigures, StockAndTaxFollowTheType)
{
    Product product;
    product.setReorderLevel(5);
    product.setStockQuantity(5);
    product.setCostPrice(2.5);
    EXPECT_TRUE(product.isLowStock()); // at the level counts as low
    EXPECT_DOUBLE_EQ(product.stockValue(), 12.5);
    product.setProductTypeRaw(QStringLiteral("gadget")); // unknown still counts stock
    EXPECT_TRUE(product.tracksStock());
    product.setProductType(ProductType::service);
    EXPECT_FALSE(product.isLowStock());
    EXPECT_EQ(product.stockValue(), 0);

    product.setTaxRate(0.125);
    ASSERT_EQ(product.taxComponents().size(), 1u);
    EXPECT_EQ(product.taxComponents()[0].label, QStringLiteral("Tax (12.5%)"));
    product.setIsTaxable(false);
    EXPECT_TRUE(product.taxComponents().empty());
}

TEST(SettingsFigures, LoyaltyValueAndDiscountLimitText)
{
    AppSettings settings;
    EXPECT_DOUBLE_EQ(settings.loyaltyValuePerPoint(), 0.05);
    settings.setLoyaltyRedeemPoints(0);
    EXPECT_EQ(settings.loyaltyValuePerPoint(), 0);
    settings.setLoyaltyRedeemPoints(100);
    settings.setLoyaltyRedeemValue(-5);
    EXPECT_EQ(settings.loyaltyValuePerPoint(), 0);

    EXPECT_EQ(settings.discountLimitText(), QStringLiteral("10% of the sale"));
    settings.setDiscountLimit(12.5);
    EXPECT_EQ(settings.discountLimitText(), QStringLiteral("12.5% of the sale"));
    settings.setDiscountLimitIsPercent(false);
    EXPECT_EQ(settings.discountLimitText(), QStringLiteral("₵12.50"));
}

TEST(TaxGroupComponents, CompoundTaxIsChargedOnTheBasePlusLevies)
{
    auto plain = Tax::make(QStringLiteral("Levy"), 0.1, false, 1);
    auto compound = Tax::make(QStringLiteral("VAT"), 0.05, true, 0);
    auto group = TaxGroup::make(QStringLiteral("Mixed"), {plain, compound}, 0);
    const auto components = group->components();
    ASSERT_EQ(components.size(), 2u);
    EXPECT_EQ(components[0].label, QStringLiteral("VAT (5%)")); // sorted by sortOrder first
    EXPECT_DOUBLE_EQ(components[0].share, 0.055);
    EXPECT_DOUBLE_EQ(components[1].share, 0.1);
}

TEST(InventoryMovement, CostLineTellsWhatADeliveryDidToTheCost)
{
    const struct {
        const char* name;
        std::optional<double> unitCost, before, after;
        std::optional<QString> expected;
    } cases[] = {
        {"costed delivery", 3, 2, 2.3333, QStringLiteral("Delivered at ₵3.00 · cost ₵2.00 → ₵2.33")},
        {"cost change alone", std::nullopt, 1234.5, 1300, QStringLiteral("cost ₵1,234.50 → ₵1,300.00")},
        {"unit cost alone", 0.5, std::nullopt, std::nullopt, QStringLiteral("Delivered at ₵0.50")},
        {"half a change", 3, 2, std::nullopt, QStringLiteral("Delivered at ₵3.00")},
        {"no cost", std::nullopt, std::nullopt, std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        InventoryMovement movement;
        movement.setUnitCost(c.unitCost);
        movement.setCostBefore(c.before);
        movement.setCostAfter(c.after);
        EXPECT_EQ(movement.costLine(), c.expected) << c.name;
    }
}
