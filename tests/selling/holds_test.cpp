#include "selling/heldsalesmodel.h"

#include "support/salesscene.h"

namespace {

struct HoldsTest : SalesTest {
    HeldSalesModel heldSales{context};
    Ref<Product> soap = scene.product({.name = "Soap", .price = 10});
    Ref<Product> rice = scene.product({.name = "Rice", .price = 8, .unit = SellingUnit::kg});

    Ref<HeldSale> hold(const Cart& cart)
    {
        now = now.addSecs(60);
        return sales.hold(cart, cashier, QString());
    }
    Cart cartOf(const Ref<Product>& product, double quantity = 1)
    {
        Cart cart;
        cart.addOrIncrement(product, quantity);
        return cart;
    }
};

} // namespace

TEST_F(HoldsTest, NumbersRiseAndAProductDeletedWhileHeldIsDroppedWithoutAWord)
{
    QList<Ref<HeldSale>> held;
    for (int i = 0; i < 5; ++i)
        held.append(hold(cartOf(soap)));
    ASSERT_TRUE(heldSales.recall(held[1]));
    ASSERT_TRUE(heldSales.cancel(held[2]));
    ASSERT_TRUE(heldSales.cancel(held[4]));

    EXPECT_EQ(hold(cartOf(soap))->label(), "Hold #6");
    EXPECT_EQ(held[2]->statusRaw(), "cancelled");
    EXPECT_EQ(context.count<HeldSale>(), 6) << "recalled and cancelled holds stay";
    QStringList active;
    for (const Ref<HeldSale>& row : heldSales.activeHeldSales())
        active << row->label();
    EXPECT_EQ(active, (QStringList{"Hold #1", "Hold #4", "Hold #6"})) << "oldest first";

    Cart both = cartOf(soap);
    both.addOrIncrement(rice, 2);
    const Ref<HeldSale> mixed = hold(both);
    const Ref<HeldSale> onlyRice = hold(cartOf(rice));
    performUnitOfWork(context, [&] { context.remove(rice); });

    const std::optional<Cart> fewer = heldSales.recall(mixed);
    ASSERT_TRUE(fewer);
    ASSERT_EQ(fewer->lines().size(), 1);
    EXPECT_EQ(fewer->lines()[0].product, soap);
    const std::optional<Cart> empty = heldSales.recall(onlyRice);
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->lines().isEmpty());
    EXPECT_EQ(onlyRice->statusRaw(), "recalled");
}

TEST_F(HoldsTest, ARecallRingsAtTodaysPriceUnlessOneWasAgreedAndKeepsTheApprovals)
{
    const Ref<Customer> kofi = scene.customer("Kofi", 500);
    Cart cart;
    cart.addOrIncrement(soap, 2);
    cart.addOrIncrement(rice, 1.5);
    const QUuid riceLine = cart.lines()[1].id;
    cart.setPrice(riceLine, 7, QStringLiteral("Esi"), QStringLiteral("bulk buyer"));
    cart.setLineDiscount(cart.lines()[0].id, 1);
    cart.setCustomer(kofi);
    cart.setSaleDiscount(3);
    cart.setDiscountApprovedUpTo(4);
    cart.setDiscountApprovedBy(QStringLiteral("Esi"));
    cart.setDiscountReason(QStringLiteral("regular"));
    cart.setPointsToRedeem(100);
    cart.setAppointmentID(QUuid::createUuid());
    const Ref<HeldSale> held = hold(cart);
    EXPECT_DOUBLE_EQ(held->subtotal(), 2 * 10 - 1 + 1.5 * 7);

    performUnitOfWork(context, [&] {
        soap->setSellingPrice(12);
        rice->setSellingPrice(9);
    });
    const std::optional<Cart> recalled = heldSales.recall(held);
    ASSERT_TRUE(recalled);
    EXPECT_EQ(held->statusRaw(), "recalled");
    ASSERT_EQ(recalled->lines().size(), 2);
    EXPECT_DOUBLE_EQ(recalled->lines()[0].unitPrice(), 12) << "no agreed price: today's";
    EXPECT_DOUBLE_EQ(recalled->lines()[0].lineDiscount, 1);
    EXPECT_DOUBLE_EQ(recalled->lines()[1].unitPrice(), 7) << "the agreed price stays";
    EXPECT_EQ(recalled->lines()[1].priceApprovedBy, "Esi");
    EXPECT_DOUBLE_EQ(recalled->lines()[1].quantity, 1.5);
    EXPECT_EQ(recalled->customer(), kofi);
    EXPECT_DOUBLE_EQ(recalled->discountApprovedUpTo(), 4);
    EXPECT_EQ(recalled->discountReason(), "regular");
    EXPECT_EQ(recalled->appointmentID(), cart.appointmentID());
    EXPECT_EQ(recalled->pointsToRedeem(), 0) << "points are entered again after a recall";
}
