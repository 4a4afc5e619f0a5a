#include "receipts/receiptdata.h"

#include "environment/appenvironment.h"
#include "receiptscene.h"

namespace {

using ReceiptDataTest = ReceiptScene;

TEST_F(ReceiptDataTest, TakesEveryFieldFromTheSaleAndSettings)
{
    const Ref<Sale> sold = sale(QStringLiteral("INV-20260309-0042"), kofi);
    item(sold, QStringLiteral("Haircut"), 1, 50, {}, [](SaleItem& line) { line.setStaffName(QStringLiteral("Efua")); });
    item(sold, QStringLiteral("Rice"), 1.5, 12.335, {},
         [](SaleItem& line) { line.setSellingUnitRaw(QStringLiteral("kg")); });
    item(sold, QStringLiteral("Soap"), 2, 3, {},
         [](SaleItem& line) { line.setSellingUnitRaw(QStringLiteral("bushel")); });
    payment(sold, PaymentMethodType::mobileMoney, 40);
    payment(sold, PaymentMethodType::cash, 38.5, 50, 11.5, QStringLiteral("barter"));
    sold->setSubtotal(74.5);
    sold->setLineDiscountTotal(1.25);
    sold->setSaleDiscount(0.75);
    sold->setPointsDiscount(5);
    sold->setTotal(78.5);

    const ReceiptData receipt = ReceiptData::from(*sold, *settings);
    EXPECT_EQ(receipt.businessName, QStringLiteral("Adwoa's Provisions"));
    EXPECT_EQ(receipt.invoiceNumber, QStringLiteral("INV-20260309-0042"));
    EXPECT_EQ(receipt.cashierName, QStringLiteral("Ama Mensah"));
    EXPECT_EQ(receipt.customerName, QStringLiteral("Kofi Boateng"));
    ASSERT_EQ(receipt.lines.size(), 3);
    EXPECT_EQ(receipt.lines[0].name, QStringLiteral("Haircut (Efua)"));
    EXPECT_EQ(receipt.lines[0].quantityText(), QStringLiteral("1"));
    // 1.5 × 12.335 = 18.5025, shown to the cent.
    EXPECT_DOUBLE_EQ(receipt.lines[1].lineTotal, 18.5);
    EXPECT_EQ(receipt.lines[1].quantityText(), QStringLiteral("1.5 kg"));
    EXPECT_EQ(receipt.lines[2].unitSymbol, QString());
    // The points' value is its own row, not part of the discount.
    EXPECT_DOUBLE_EQ(receipt.discountTotal, 2.0);
    ASSERT_EQ(receipt.payments.size(), 2);
    EXPECT_EQ(receipt.payments[0].method, QStringLiteral("Mobile Money"));
    EXPECT_EQ(receipt.payments[1].method, QStringLiteral("Cash"));
    EXPECT_DOUBLE_EQ(receipt.payments[1].changeGiven, 11.5);
    EXPECT_FALSE(receipt.accountBalance || receipt.pointsBalance || receipt.voidNote);
    context.rollback();

    // Without cashier or customer: a dash and no customer row.
    const ReceiptData bare = ReceiptData::from(*store.saved(Sale::make(QStringLiteral("INV-1"), {}, {}, {})), *settings);
    EXPECT_EQ(bare.cashierName, QStringLiteral("—"));
    EXPECT_FALSE(bare.customerName);
}

TEST_F(ReceiptDataTest, TheVoidNoteIsWorkedOutOnEveryBuild)
{
    const Ref<Sale> sold = sale();
    EXPECT_FALSE(ReceiptData::from(*sold, *settings).voidNote);
    sold->setStatus(SaleStatus::voided);
    sold->setVoidReason(QString());
    EXPECT_EQ(ReceiptData::from(*sold, *settings).voidNote, QStringLiteral("VOIDED"));
    sold->setVoidReason(QStringLiteral("Rang up twice"));
    const ReceiptData reprint = ReceiptData::from(*sold, *settings);
    EXPECT_EQ(reprint.voidNote, QStringLiteral("VOIDED — Rang up twice"));
    sold->setStatus(SaleStatus::completed);
    EXPECT_FALSE(reprint.withVoidNote(*sold).voidNote);
    context.rollback();
}

TEST_F(ReceiptDataTest, TheEnvironmentAddsTheBalancesAsTheyStandNow)
{
    AppEnvironment environment(context);
    const Ref<Sale> onAccount = sale(QStringLiteral("INV-A"), kofi);
    payment(onAccount, PaymentMethodType::onAccount, 80);
    const Ref<Sale> cash = sale(QStringLiteral("INV-B"), kofi);
    payment(cash, PaymentMethodType::cash, 20);

    const ReceiptData owing = environment.receiptData(*onAccount, *settings);
    ASSERT_TRUE(owing.accountBalance);
    EXPECT_DOUBLE_EQ(*owing.accountBalance, environment.accountsService().balance(kofi));
    EXPECT_DOUBLE_EQ(*owing.accountBalance, 80);
    EXPECT_EQ(owing.pointsBalance, 120);
    EXPECT_FALSE(environment.receiptData(*cash, *settings).accountBalance);
    // With the programme off a balance shows only where the sale itself moved points.
    settings->setLoyaltyEnabled(false);
    EXPECT_FALSE(environment.receiptData(*cash, *settings).pointsBalance);
    cash->setPointsEarned(2);
    EXPECT_EQ(environment.receiptData(*cash, *settings).pointsBalance, 120);
    context.rollback();
}

} // namespace
