#include "selling/salesservice.h"

#include "selling/receiptnumbergenerator.h"
#include "support/refusalof.h"
#include "support/salesscene.h"

namespace {

PaymentInput tender(PaymentMethodType method, double amount, double tendered = 0)
{
    return {method, amount, tendered, {}};
}

struct CheckoutTest : SalesTest {
    Ref<TillShift> shift = scene.saved(std::make_shared<TillShift>());

    Ref<Product> product(const char* name, double price, double stock, double taxRate = 0,
                         ProductType type = ProductType::inventory)
    {
        return scene.product({.name = name, .price = price, .stock = stock, .taxRate = taxRate, .type = type});
    }
    Ref<Sale> checkout(const Cart& cart, const QList<PaymentInput>& payments)
    {
        return sales.checkout(cart, payments, cashier, shift, *settings);
    }
    // Everything a failed checkout must leave as it was, in memory and on disk.
    QStringList state(const QList<Ref<Product>>& products, const Ref<Customer>& customer)
    {
        QStringList lines;
        for (const Ref<Product>& p : products)
            lines << p->name() + QStringLiteral(" stock %1").arg(p->stockQuantity());
        lines << QStringLiteral("sequence %1").arg(settings->lastReceiptSequence())
              << QStringLiteral("points %1").arg(customer->loyaltyPoints())
              << QStringLiteral("pending %1").arg(context.hasChanges());
        for (const Entity* entity : {&Sale::schema(), &SaleItem::schema(), &Payment::schema(),
                                     &InventoryMovement::schema(), &LoyaltyEntry::schema()})
            lines << entity->name + QStringLiteral(" %1 live, %2 on disk")
                                        .arg(context.count(*entity))
                                        .arg(countRowsOnDisk(store.path(), entity->name));
        return lines;
    }
};

} // namespace

TEST_F(CheckoutTest, RefusalsComeInTheirOrderAndWriteNothing)
{
    const Ref<Product> soap = product("Soap", 10, 1);
    const Ref<Product> rice = product("Rice", 5, 1);
    const Ref<Product> free = product("Sample", 0, 5);
    const Ref<Product> haircut = product("Haircut", 10, 0, 0, ProductType::service);
    const auto cartOf = [](std::initializer_list<std::pair<Ref<Product>, double>> lines) {
        Cart cart;
        for (const auto& [p, quantity] : lines)
            cart.addOrIncrement(p, quantity);
        return cart;
    };
    const PaymentInput cashShort = tender(PaymentMethodType::cash, 10, 9.98);
    const Cart oneSoap = cartOf({{soap, 1}});
    const struct {
        const char* name;
        Cart cart;
        QList<PaymentInput> payments;
        qint64 points;
        QString refusal;
    } cases[] = {
        // clang-format off
        {"empty cart before missing payment", {}, {}, 0, "Cannot complete a sale with an empty cart."},
        {"no payment even for a total of 0", cartOf({{free, 1}}), {}, 0,
         "Add at least one payment method before completing the sale."},
        // The service line passes whatever its stock; rice is short on its own line.
        {"stock before cash, first short line decides", cartOf({{haircut, 3}, {soap, 1}, {rice, 2}, {free, 9}}),
         {cashShort}, 0, "Only 1 of Rice in stock (requested 2)."},
        {"cash short by two cents, before points", oneSoap, {cashShort}, 200,
         "Cash tendered (₵9.98) is less than the amount due (₵10.00)."},
        {"points before credit", oneSoap, {tender(PaymentMethodType::onAccount, 10)}, 200,
         "Add a customer to the sale to use their points."},
        {"credit before the balance", oneSoap, {tender(PaymentMethodType::onAccount, 1)}, 0,
         "Add a customer to the sale to put it On Account."},
        {"payments two cents short", oneSoap, {tender(PaymentMethodType::card, 9.98)}, 0,
         "Payments total ₵9.98 but the sale total is ₵10.00."},
        // clang-format on
    };
    const Ref<Customer> nobody = scene.customer("Ama");
    const QStringList before = state({soap, rice}, nobody);
    for (const auto& c : cases) {
        Cart cart = c.cart;
        cart.setPointsToRedeem(c.points);
        EXPECT_EQ(refusalOf([&] { checkout(cart, c.payments); }), c.refusal) << c.name;
        EXPECT_EQ(state({soap, rice}, nobody), before) << c.name;
    }
}

TEST_F(CheckoutTest, ACentEitherWayPassesAndTendersAreStoredAsTheyCount)
{
    const struct {
        const char* name;
        double price;
        PaymentInput payment;
        double stored[3]; // amount, tenderedAmount, changeGiven
    } cases[] = {
        // clang-format off
        {"cash a cent short", 10, tender(PaymentMethodType::cash, 10, 9.99), {10, 9.99, 0}},
        {"cash a cent short of odd cents", 10.37, tender(PaymentMethodType::cash, 10.37, 10.36), {10.37, 10.36, 0}},
        {"cash with change", 10, tender(PaymentMethodType::cash, 10, 20), {10, 20, 10}},
        {"card with a stale tendered amount", 10, tender(PaymentMethodType::card, 10, 50), {10, 10, 0}},
        {"payments a cent short", 10, tender(PaymentMethodType::card, 9.99), {9.99, 9.99, 0}},
        // 100.01 - 100 is 0.0100000000000051 in doubles.
        {"payments a cent over a hundred", 100, tender(PaymentMethodType::mobileMoney, 100.01), {100.01, 100.01, 0}},
        // clang-format on
    };
    for (const auto& c : cases) {
        Cart cart;
        cart.addOrIncrement(product("Soap", c.price, 5), 1);
        const Ref<Sale> sale = checkout(cart, {c.payment});
        const QList<Ref<Payment>> payments = sale->payments();
        ASSERT_EQ(payments.size(), 1) << c.name;
        // The cent let through is stored nowhere: the sale keeps its own total.
        EXPECT_EQ(sale->total(), c.price) << c.name;
        EXPECT_EQ(payments[0]->amount(), c.stored[0]) << c.name;
        EXPECT_EQ(payments[0]->tenderedAmount(), c.stored[1]) << c.name;
        EXPECT_EQ(payments[0]->changeGiven(), c.stored[2]) << c.name;
    }
}

TEST_F(CheckoutTest, SaleOnAccountThenSplitCashSaleTheNextDay)
{
    const Ref<Product> soap = product("Soap", 20, 10, 0.15);
    const Ref<Product> haircut = product("Haircut", 50, 0, 0, ProductType::service);
    const Ref<Customer> ama = scene.customer("Ama");
    const auto booking = store.saved(std::make_shared<Appointment>());
    auto stylist = std::make_shared<StaffMember>();
    stylist->setName(QStringLiteral("Efua"));
    stylist->setCommissionRate(0.1);

    Cart onAccount;
    onAccount.addOrIncrement(soap, 2);
    onAccount.addOrIncrement(haircut, 1);
    onAccount.setLineDiscount(onAccount.lines()[0].id, 4);
    onAccount.setStaff(onAccount.lines()[1].id, stylist);
    onAccount.setCustomer(ama);
    onAccount.setAppointmentID(booking->id());
    // Soap: 40 less 4, plus 15% of 36; the haircut carries no tax.
    const Ref<Sale> first = checkout(onAccount, {tender(PaymentMethodType::onAccount, 91.40)});

    EXPECT_EQ(first->invoiceNumber(), QStringLiteral("INV-20260309-0001"));
    EXPECT_EQ(first->taxTotal(), 5.4);
    EXPECT_EQ(first->total(), 91.4);
    const QList<Ref<SaleItem>> items = first->items();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]->unitCostSnapshot(), 10);
    EXPECT_EQ(items[0]->lineDiscount(), 4);
    EXPECT_EQ(items[1]->commissionRate(), 0.1);
    EXPECT_EQ(soap->stockQuantity(), 8);
    // Earned on the total net of tax: 86.00 at 10.00 a point.
    EXPECT_EQ(first->pointsEarned(), 8);
    EXPECT_EQ(ama->loyaltyPoints(), 8);
    EXPECT_EQ(AccountsService(context).balance(ama), 91.4);
    EXPECT_EQ(booking->statusRaw(), QStringLiteral("completed"));
    EXPECT_EQ(booking->saleInvoiceNumber(), first->invoiceNumber());

    now = now.addDays(1);
    Cart split;
    split.addOrIncrement(soap, 1);
    const Ref<Sale> second =
        checkout(split, {tender(PaymentMethodType::cash, 13, 20), tender(PaymentMethodType::card, 10)});
    EXPECT_EQ(second->invoiceNumber(), QStringLiteral("INV-20260310-0002"));
    EXPECT_EQ(ReceiptNumberGenerator::next(12345, now), QStringLiteral("INV-20260310-12345")) << "past four digits";
    EXPECT_EQ(second->payments().size(), 2);

    // One save per sale, with the number taken.
    store.reopen();
    EXPECT_EQ(store.context().fetchFirst<AppSettings>()->lastReceiptSequence(), 2);
    // One movement per stock-tracked line; the service has none.
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), 2);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("LoyaltyEntry")), 1);
}

TEST_F(CheckoutTest, PointsAreWorthTodaysValueAndEarnOnTheNetAfterRedemption)
{
    const Ref<Product> oil = product("Oil", 100, 5);
    const Ref<Customer> ama = scene.customer("Ama", 500);
    Cart cart;
    cart.addOrIncrement(oil, 1);
    cart.setCustomer(ama);
    cart.setValuePerPoint(0.01); // stale: the settings say 100 points are worth 5.00
    cart.setPointsToRedeem(400);
    const Ref<Sale> sale = checkout(cart, {tender(PaymentMethodType::card, 80)});

    EXPECT_EQ(sale->pointsDiscount(), 20);
    EXPECT_EQ(sale->items()[0]->lineDiscount(), 20);
    EXPECT_EQ(sale->pointsRedeemed(), 400);
    EXPECT_EQ(sale->pointsEarned(), 8);
    EXPECT_EQ(ama->loyaltyPoints(), 108);
}

