#include "selling/salesservice.h"

#include "support/refusalof.h"
#include "support/salesscene.h"

namespace {

struct VoidsTest : SalesTest {
    Ref<User> admin = scene.user("Esi", UserRole::admin);
    Ref<TillShift> shift = scene.saved(std::make_shared<TillShift>());
    Ref<Product> soap = scene.product({.name = "Soap", .price = 10, .stock = 20});

    Ref<Sale> sell(const Cart& cart, const Ref<TillShift>& till)
    {
        return sales.checkout(cart, SalesScene::paidBy(cart, *settings), cashier, till, *settings);
    }
    Ref<Sale> sellSoap(double quantity = 2)
    {
        Cart cart;
        cart.addOrIncrement(soap, quantity);
        return sell(cart, shift);
    }
    QString problemOf(const Sale& sale, const User* by, const User* approvedBy, bool cashiersMayVoid,
                      const TillShift* open)
    {
        const std::optional<SalesError> problem =
            SalesService::voidProblem(sale, by, approvedBy, cashiersMayVoid, open);
        return problem ? problem->description() : QString();
    }
};

const QString alreadyVoided = QStringLiteral("This sale is already voided.");
const QString refundRow = QStringLiteral("A refund can't be voided.");
const QString needsAdmin =
    QStringLiteral("Only an admin can void a sale, or a cashier with an admin's approval.");
const QString hasRefunds = QStringLiteral(
    "Part of this sale has already been refunded, so it can't be voided. Use Refunds for the rest.");
const QString notThisTill =
    QStringLiteral("Only sales from the till that's open now can be voided. Use Refunds for older sales.");

} // namespace

TEST_F(VoidsTest, RightsComeBeforeTheSalesStateAndTheTillComesLast)
{
    const Ref<Sale> sale = sellSoap();
    const Ref<TillShift> other = scene.saved(std::make_shared<TillShift>());
    Cart one;
    one.addOrIncrement(soap, 1);
    const Ref<Sale> otherTill = sell(one, other);
    const Ref<Sale> noTill = sell(one, nullptr);
    const Ref<Sale> refunded = sellSoap(1);
    const Ref<Sale> refund =
        sales.writeRefund(refunded, {{refunded->items().first(), 1}}, QStringLiteral("x"), cashier, shift,
                          PaymentMethodType::cash, *settings);
    const Ref<Sale> markedOnly = sellSoap(1);   // partly refunded by status alone
    const Ref<Sale> returnedOnly = sellSoap(1); // a returned quantity with the status left alone
    const Ref<Sale> unknownStatus = sellSoap(1);
    const Ref<Sale> voided = sellSoap(1);
    performUnitOfWork(context, [&] {
        markedOnly->setStatus(SaleStatus::partiallyRefunded);
        returnedOnly->items().first()->setReturnedQuantity(0.5);
        unknownStatus->setStatusRaw(QStringLiteral("layaway"));
        voided->setStatus(SaleStatus::voided);
    });

    const User* nobody = nullptr;
    const struct {
        const char* name;
        Ref<Sale> sale;
        const User* by;
        const User* approvedBy;
        bool cashiersMayVoid;
        const TillShift* open;
        QString problem;
    } cases[] = {
        {"admin, this till", sale, admin.get(), nobody, false, shift.get(), {}},
        {"cashier with an admin's approval", sale, cashier.get(), admin.get(), false, shift.get(), {}},
        {"cashiers may void: the role plays no part", sale, cashier.get(), nobody, true, shift.get(), {}},
        {"cashier alone", sale, cashier.get(), nobody, false, shift.get(), needsAdmin},
        {"a cashier approving is no admin", sale, cashier.get(), cashier.get(), false, shift.get(),
         needsAdmin},
        {"voided first, before rights", voided, cashier.get(), nobody, false, nullptr, alreadyVoided},
        {"a refund row, before rights", refund, cashier.get(), nobody, false, nullptr, refundRow},
        {"rights before refunds", markedOnly, cashier.get(), nobody, false, shift.get(), needsAdmin},
        {"partly refunded by status", markedOnly, admin.get(), nobody, false, shift.get(), hasRefunds},
        {"a returned quantity", returnedOnly, admin.get(), nobody, false, shift.get(), hasRefunds},
        {"an unknown status reads as completed", unknownStatus, admin.get(), nobody, false, shift.get(), {}},
        {"no open till, even for an admin", sale, admin.get(), nobody, false, nullptr, notThisTill},
        {"another till", otherTill, admin.get(), nobody, false, shift.get(), notThisTill},
        {"a sale of no till", noTill, admin.get(), nobody, false, shift.get(), notThisTill},
    };
    for (const auto& c : cases)
        EXPECT_EQ(problemOf(*c.sale, c.by, c.approvedBy, c.cashiersMayVoid, c.open), c.problem) << c.name;
}

TEST_F(VoidsTest, TheReasonIsAskedForOnlyOnceTheVoidIsAllowed)
{
    const Ref<Sale> sale = sellSoap();
    const auto refusal = [&](const Ref<TillShift>& open, const QString& reason) {
        return refusalOf([&] { sales.voidSale(sale, reason, cashier, nullptr, true, open); });
    };
    EXPECT_EQ(refusal(nullptr, QStringLiteral(" \n")), notThisTill);
    EXPECT_EQ(refusal(shift, QStringLiteral(" \n")), "Enter a reason for voiding the sale.");
    EXPECT_EQ(sale->status(), SaleStatus::completed);
    EXPECT_FALSE(context.hasChanges());
}

TEST_F(VoidsTest, AVoidPutsEveryLineBackUnwindsThePointsAndKeepsTheRow)
{
    const Ref<Product> gone = scene.product({.name = "Gone", .price = 5, .stock = 3});
    const Ref<Customer> kofi = scene.customer("Kofi", 0);
    Cart cart;
    cart.addOrIncrement(soap, 3);
    cart.addOrIncrement(gone, 1);
    cart.setCustomer(kofi);
    const Ref<Sale> sale = sell(cart, shift);
    ASSERT_GT(sale->pointsEarned(), 0);
    // The customer spent the points meanwhile, and a product went.
    LoyaltyService(context).adjust(kofi, -sale->pointsEarned(), QStringLiteral("spent"), admin);
    performUnitOfWork(context, [&] { context.remove(gone); });

    now = now.addSecs(120);
    sales.voidSale(sale, QStringLiteral("  rung up twice \n"), cashier, admin, false, shift);

    EXPECT_EQ(sale->statusRaw(), "voided");
    EXPECT_EQ(sale->voidedAt(), now);
    EXPECT_EQ(sale->voidReason(), "rung up twice");
    EXPECT_EQ(sale->voidedByName(), "Ama (approved by Esi)");
    EXPECT_DOUBLE_EQ(sale->total(), 35) << "the row keeps its figures; totals skip it by its status";
    EXPECT_DOUBLE_EQ(soap->stockQuantity(), 20);
    EXPECT_EQ(context.count<InventoryMovement>(InventoryMovement::Col::typeRaw == "voidRestock"), 1)
        << "the deleted product's line moves nothing";
    EXPECT_EQ(kofi->loyaltyPoints(), 0) << "the reversal stops at a balance of 0";
    EXPECT_EQ(sale->pointsReversed(), sale->pointsEarned());
    EXPECT_FALSE(context.hasChanges());
}
