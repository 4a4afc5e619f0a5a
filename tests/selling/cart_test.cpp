#include "selling/cart.h"

#include "support/printers.h"

#include <gtest/gtest.h>

namespace {
Ref<Product> product(double price, double taxRate = 0, const char* unit = "each")
{
    auto made = std::make_shared<Product>();
    made->setSellingPrice(price);
    made->setTaxRate(taxRate);
    made->setSellingUnitRaw(QString::fromUtf8(unit));
    return made;
}
} // namespace

TEST(Cart, AddingTheSameProductMergesIntoTheFirstLineInThousandths)
{
    const Ref<Product> soap = product(4);
    const Ref<Product> rice = product(12, 0, "kg");
    Cart cart;
    cart.addOrIncrement(rice, 0.1);
    cart.addOrIncrement(soap, 1);
    cart.setPrice(cart.lines()[0].id, 11, QStringLiteral("Kofi"), QStringLiteral("old stock"));
    cart.addOrIncrement(rice, 0.2);

    ASSERT_EQ(cart.lines().size(), 2);
    EXPECT_EQ(cart.lines()[0].product, rice);
    EXPECT_EQ(cart.lines()[0].quantity, 0.3); // not 0.30000000000000004
    EXPECT_EQ(cart.lines()[0].priceOverride, 11);

    cart.updateQuantity(cart.lines()[0].id, 1.23456);
    EXPECT_EQ(cart.lines()[0].quantity, 1.235);
    cart.updateQuantity(cart.lines()[0].id, -1);
    ASSERT_EQ(cart.lines().size(), 1);
    EXPECT_EQ(cart.lines()[0].product, soap);
}

TEST(Cart, PriceWithinTheToleranceOfTheListPriceIsAReturnToIt)
{
    const struct {
        const char* name;
        double listPrice, typed;
        std::optional<double> override;
    } cases[] = {
        {"0.004 above rounds back to list", 10, 10.004, std::nullopt},
        {"0.005 above rounds up a cent", 10, 10.005, 10.01},
        {"negative price is free", 10, -3, 0},
        {"off-cent list price just inside", 10.003, 10, std::nullopt},
        {"off-cent list price just outside", 10.006, 10, 10},
    };
    for (const auto& c : cases) {
        Cart cart;
        cart.addOrIncrement(product(c.listPrice), 1);
        const QUuid id = cart.lines()[0].id;
        cart.setPrice(id, 20, QStringLiteral("Earlier"), QStringLiteral("earlier reason"));
        cart.setPrice(id, c.typed, QStringLiteral("Kofi"), QStringLiteral("promo"));
        // A return to list price drops the approval along with the override.
        EXPECT_EQ(cart.lines()[0].priceOverride, c.override) << c.name;
        EXPECT_EQ(cart.lines()[0].priceApprovedBy, c.override ? QStringLiteral("Kofi") : QString()) << c.name;
        EXPECT_EQ(cart.lines()[0].priceReason, c.override ? QStringLiteral("promo") : QString()) << c.name;
    }
}

TEST(Cart, ChangingTheCustomerDropsThePointsToRedeem)
{
    auto ama = std::make_shared<Customer>();
    auto kojo = std::make_shared<Customer>();
    const struct {
        const char* name;
        Ref<Customer> from, to;
        bool kept;
    } cases[] = {
        {"another customer", ama, kojo, false},    {"the same customer again", ama, ama, true},
        {"customer removed", ama, nullptr, false}, {"customer added", nullptr, ama, false},
        {"still none", nullptr, nullptr, true},
    };
    for (const auto& c : cases) {
        Cart cart;
        cart.setCustomer(c.from);
        cart.setPointsToRedeem(200);
        cart.setValuePerPoint(0.05);
        cart.setRedemptionApprovedBy(QStringLiteral("Kofi"));
        cart.setCustomer(c.to);
        EXPECT_EQ(cart.pointsToRedeem(), c.kept ? 200 : 0) << c.name;
        EXPECT_EQ(cart.valuePerPoint(), c.kept ? 0.05 : 0) << c.name;
        EXPECT_EQ(cart.redemptionApprovedBy(), c.kept ? QStringLiteral("Kofi") : QString()) << c.name;
    }
}

TEST(Cart, PointsLoseOutWhenTheLinesCannotTakeBothDiscounts)
{
    const struct {
        const char* name;
        double saleDiscount;
        qint64 points; // at 0.05 each, on a cart worth 20
        double cashierApplied, pointsApplied, total;
    } cases[] = {
        {"both fit", 5, 100, 5, 5, 10},
        {"points cut to what is left", 15, 200, 15, 5, 0},
        {"cashier's discount takes it all", 25, 200, 20, 0, 0},
        {"negative cashier's discount counts as none", -5, 100, 0, 5, 15},
    };
    for (const auto& c : cases) {
        Cart cart;
        cart.addOrIncrement(product(4), 5);
        cart.setSaleDiscount(c.saleDiscount);
        cart.setValuePerPoint(0.05);
        cart.setPointsToRedeem(c.points);
        const CartCalculation result = cart.calculation(false);
        EXPECT_EQ(result.saleDiscount, c.cashierApplied) << c.name;
        EXPECT_EQ(result.pointsDiscount, c.pointsApplied) << c.name;
        EXPECT_EQ(result.total, c.total) << c.name;
        // What the cashier typed still shows in full, and nothing is left for points once it is used up.
        EXPECT_EQ(cart.cashierDiscountTotal(), std::max(c.saleDiscount, 0.0)) << c.name;
        EXPECT_EQ(cart.discountableAmount(), std::max(20 - std::max(c.saleDiscount, 0.0), 0.0)) << c.name;
    }
}
