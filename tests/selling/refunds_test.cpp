#include "selling/salesservice.h"

#include "support/salesscene.h"

namespace {

struct RefundsTest : SalesTest {
    Ref<Customer> kofi;

    Ref<Sale> sell(const Cart& cart, PaymentMethodType method = PaymentMethodType::cash)
    {
        return sales.checkout(cart, SalesScene::paidBy(cart, *settings, method), cashier, nullptr, *settings);
    }
    Ref<Sale> refund(const Ref<Sale>& sale, const QList<RefundEntry>& entries,
                     PaymentMethodType method = PaymentMethodType::cash)
    {
        return sales.writeRefund(sale, entries, QStringLiteral("Damaged"), cashier, nullptr, method,
                                 *settings);
    }
    // Soap to Kofi, who has `points` and spends `redeemed` of them on it.
    Ref<Sale> sellToKofi(double price, double quantity, qint64 points, qint64 redeemed)
    {
        kofi = scene.customer("Kofi", points);
        Cart cart;
        cart.addOrIncrement(scene.product({.name = "Soap", .price = price}), quantity);
        cart.setCustomer(kofi);
        cart.setPointsToRedeem(redeemed);
        return sell(cart);
    }
    QList<Ref<InventoryMovement>> movementsOf(const Ref<Product>& product)
    {
        return context.fetch<InventoryMovement>(FetchDescriptor(InventoryMovement::Col::product == product));
    }
};

// A line as checkout stores it, not in any store.
Ref<SaleItem> soldLine(double quantity, double price, double discount, double taxRate, bool pricesIncludeTax)
{
    return SaleItem::make(nullptr, quantity, price, 0, taxRate, discount, pricesIncludeTax);
}

} // namespace

TEST(RefundAmount, PaysBackPerUnitNetOfTheLinesDiscountAndRoundsOnceOverTheWhole)
{
    const Ref<SaleItem> discounted = soldLine(2, 10, 1.01, 0.15, false); // 0.505 off each unit
    const Ref<SaleItem> inclusive = soldLine(1, 11.5, 0, 0.15, true);
    const Ref<SaleItem> halfCent = soldLine(2, 1, 1.99, 0, false); // 0.005 a unit
    const Ref<SaleItem> otherHalfCent = soldLine(2, 1, 1.99, 0, false);
    const struct {
        const char* name;
        QList<RefundEntry> entries;
        double amount;
    } cases[] = {
        {"nothing", {}, 0},
        {"one unit: 9.495 and its tax", {{discounted, 1}}, 10.92},
        {"both units", {{discounted, 2}}, 21.84},
        {"prices with tax: the tax is inside", {{inclusive, 1}}, 11.5},
        {"a line with no quantity adds nothing", {{discounted, 0}, {inclusive, 1}}, 11.5},
        // Rounded per line this would be 0.02.
        {"half cents are rounded over the whole", {{halfCent, 1}, {otherHalfCent, 1}}, 0.01},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(SalesService::refundAmount(c.entries), c.amount) << c.name;

    EXPECT_NEAR(SalesService::refundParts(*inclusive, 1).tax, 1.5, 1e-12);
    EXPECT_DOUBLE_EQ(SalesService::unitDiscount(*soldLine(0, 10, 3, 0, false)), 0)
        << "no quantity, no discount";
}

TEST_F(RefundsTest, ARefundIsANegativeSaleOfTheSameSeriesAndStockComesBack)
{
    const Ref<Product> soap = scene.product({.name = "Soap", .price = 10, .stock = 20, .taxRate = 0.15});
    const Ref<Product> haircut =
        scene.product({.name = "Haircut", .price = 40, .type = ProductType::service});
    const Ref<Product> rice =
        scene.product({.name = "Rice", .price = 8, .stock = 5, .unit = SellingUnit::kg});
    Cart cart;
    cart.addOrIncrement(soap, 2);
    cart.addOrIncrement(haircut, 1);
    cart.addOrIncrement(rice, 0.25);
    cart.setSaleDiscount(5);
    const Ref<Sale> sale = sell(cart);
    const QList<Ref<SaleItem>> lines = sale->items();
    ASSERT_EQ(lines.size(), 3);

    now = now.addSecs(600);
    const QList<RefundEntry> entries{{lines[0], 1}, {lines[1], 1}, {lines[2], 0.1}};
    const double amount = SalesService::refundAmount(entries);
    const Ref<Sale> returned = refund(sale, entries, PaymentMethodType::card);

    EXPECT_EQ(returned->invoiceNumber(), "INV-20260309-0002");
    EXPECT_EQ(returned->refundOfSaleID(), sale->id());
    EXPECT_EQ(returned->statusRaw(), "refunded");
    EXPECT_DOUBLE_EQ(returned->total(), -amount) << "the screen's amount is what is paid back";
    EXPECT_DOUBLE_EQ(returned->subtotal(), -(10 + 40 + 0.8));
    EXPECT_DOUBLE_EQ(returned->saleDiscount(), 0);
    EXPECT_LT(returned->lineDiscountTotal(), 0) << "the sale discount came back through the lines";
    ASSERT_EQ(returned->payments().size(), 1);
    EXPECT_EQ(returned->payments()[0]->method(), PaymentMethodType::card);
    EXPECT_DOUBLE_EQ(returned->payments()[0]->amount(), returned->total());

    const QList<Ref<SaleItem>> back = returned->items();
    ASSERT_EQ(back.size(), 3);
    EXPECT_DOUBLE_EQ(back[0]->quantity(), -1);
    EXPECT_DOUBLE_EQ(back[0]->lineDiscount(), -SalesService::unitDiscount(*lines[0]));
    EXPECT_EQ(back[0]->taxComponentsRaw(), lines[0]->taxComponentsRaw());
    EXPECT_DOUBLE_EQ(lines[2]->returnedQuantity(), 0.1);
    EXPECT_EQ(sale->status(), SaleStatus::partiallyRefunded);

    EXPECT_DOUBLE_EQ(soap->stockQuantity(), 19);
    EXPECT_DOUBLE_EQ(rice->stockQuantity(), 4.85);
    const QList<Ref<InventoryMovement>> soapMoves = movementsOf(soap);
    ASSERT_EQ(soapMoves.size(), 2);
    EXPECT_EQ(soapMoves[1]->type(), InventoryMovementType::returnRestock);
    EXPECT_TRUE(movementsOf(haircut).isEmpty()) << "a service has no stock to return";
    EXPECT_FALSE(context.hasChanges()) << "saved whole";
}

TEST_F(RefundsTest, AFullRefundInTwoStepsGivesBackEveryPointWhateverTheShares)
{
    const Ref<Sale> sale = sellToKofi(30, 3, 300, 100);
    ASSERT_EQ(sale->pointsRedeemed(), 100);
    ASSERT_GT(sale->pointsEarned(), 0);
    const Ref<SaleItem> line = sale->items().first();

    const Ref<Sale> first = refund(sale, {{line, 1}});
    EXPECT_EQ(sale->status(), SaleStatus::partiallyRefunded);
    EXPECT_GT(first->pointsRedeemed(), -100) << "a share of the points, not all";
    EXPECT_LT(first->pointsRedeemed(), 0);

    refund(sale, {{line, 2}});
    EXPECT_EQ(sale->status(), SaleStatus::refunded);
    EXPECT_EQ(sale->pointsReturned(), 100);
    EXPECT_EQ(sale->pointsReversed(), sale->pointsEarned());
    EXPECT_EQ(kofi->loyaltyPoints(), 300);
}

TEST_F(RefundsTest, ASalePaidWhollyByPointsGivesThemAllBackOnAnyPart)
{
    const Ref<Sale> sale = sellToKofi(5, 2, 200, 200); // 200 × 0.05 covers the 10.00
    ASSERT_DOUBLE_EQ(sale->total(), 0);

    refund(sale, {{sale->items().first(), 1}});
    EXPECT_EQ(sale->pointsReturned(), 200) << "with a net of 0 the share is 1";
    EXPECT_EQ(kofi->loyaltyPoints(), 200);
}

TEST_F(RefundsTest, ADeletedProductRefundsInMoneyOnly)
{
    const Ref<Product> soap = scene.product({.name = "Soap", .price = 10, .stock = 20});
    Cart cart;
    cart.addOrIncrement(soap, 2);
    const Ref<Sale> sale = sell(cart);
    performUnitOfWork(context, [&] { context.remove(soap); });
    const Ref<SaleItem> line = sale->items().first();
    ASSERT_EQ(line->product(), nullptr);

    const Ref<Sale> returned = refund(sale, {{line, 2}});
    EXPECT_DOUBLE_EQ(returned->total(), -20);
    EXPECT_EQ(returned->items().first()->productNameSnapshot(), "Soap");
    EXPECT_EQ(context.count<InventoryMovement>(InventoryMovement::Col::typeRaw == "returnRestock"), 0);
}
