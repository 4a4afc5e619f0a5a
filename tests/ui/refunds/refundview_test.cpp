#include "ui/refunds/refundview.h"

#include "ui/access/approvalsheet.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/receipts/receiptview.h"
#include "ui/refunds/refundlinerow.h"

#include "ui/salesscreentest.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

class RefundViewTest : public SalesScreenTest {
protected:
    Ref<Product> rice = scene.product({.name = "Rice", .price = 8, .stock = 50, .unit = SellingUnit::kg});
};

} // namespace

TEST_F(RefundViewTest, ACashierRefundsPartOfASaleWithAnAdminsPinAndSeesTheRefundReceipt)
{
    signIn(UserRole::cashier);
    performUnitOfWork(store.context(), [&] { session.settings()->setApproveRefunds(true); });
    Cart cart;
    cart.addOrIncrement(soap, 3);
    cart.addOrIncrement(rice, 1.5);
    const Ref<Sale> sale = environment.salesService().checkout(
        cart, SalesScene::paidBy(cart, *session.settings()), user, nullptr, *session.settings());
    RefundView& refunds = goTo<RefundView>(QStringLiteral("Refunds"));
    EXPECT_FALSE(refunds.isShowingSale());
    EXPECT_TRUE(visibleTexts(&refunds).contains("Find a receipt to begin"));

    QTest::keyClicks(refunds.receiptField(), "INV-20260309-0009");
    QTest::keyClick(refunds.receiptField(), Qt::Key_Return);
    EXPECT_EQ(refunds.errorLabel()->text(), "No original sale found for receipt \"INV-20260309-0009\".");
    refunds.receiptField()->clear();
    QTest::keyClicks(refunds.receiptField(), sale->invoiceNumber());
    refunds.findButton()->click();
    ASSERT_TRUE(refunds.isShowingSale());
    EXPECT_EQ(refunds.originalTotalLabel()->text(), "₵42.00");
    EXPECT_EQ(refunds.customerLabel()->text(), "Walk-in");
    ASSERT_EQ(refunds.lineRows().size(), 2);
    RefundLineRow* soapRow = refunds.lineRows()[0];
    RefundLineRow* riceRow = refunds.lineRows()[1];
    EXPECT_EQ(soapRow->detailLabel()->text(), "Purchased 3 · 3 eligible to return");
    EXPECT_EQ(riceRow->detailLabel()->text(), "Purchased 1.5 kg · 1.5 kg eligible to return");
    EXPECT_EQ(refunds.amountLabel()->text(), "₵0.00");
    EXPECT_FALSE(refunds.processButton()->isEnabled());

    ASSERT_NE(soapRow->moreButton(), nullptr);
    soapRow->moreButton()->click();
    soapRow->moreButton()->click();
    EXPECT_EQ(soapRow->stepperValue()->text(), "2");
    ASSERT_NE(riceRow->quantityField(), nullptr);
    QTest::keyClicks(riceRow->quantityField(), "0,5");
    EXPECT_EQ(refunds.amountLabel()->text(), "₵24.00");
    QTest::mouseClick(refunds.methodPicker()->segment(2), Qt::LeftButton);
    QTest::keyClicks(refunds.reasonField(), "Too salty");
    ASSERT_TRUE(refunds.processButton()->isEnabled());
    refunds.processButton()->click();

    auto* approval = refunds.findChild<ApprovalSheet*>();
    ASSERT_NE(approval, nullptr);
    EXPECT_TRUE(visibleTexts(approval).contains("Refund ₵24.00 on INV-20260309-0001 (Mobile Money)."));
    QTest::keyClicks(approval->pinField(), "4321");
    approval->primaryButton()->click();

    const Ref<Sale> refund = refunds.model().completedRefund();
    ASSERT_NE(refund, nullptr);
    EXPECT_DOUBLE_EQ(refund->total(), -24);
    EXPECT_EQ(refund->payments().first()->method(), PaymentMethodType::mobileMoney);
    EXPECT_EQ(sale->status(), SaleStatus::partiallyRefunded);
    auto* receipt = refunds.findChild<ReceiptView*>();
    ASSERT_NE(receipt, nullptr) << "the refund's receipt is shown";
    EXPECT_EQ(receipt->windowTitle(), "Refund receipt INV-20260309-0002");
    EXPECT_FALSE(refunds.isShowingSale()) << "ready for the next receipt";
    EXPECT_TRUE(refunds.receiptField()->text().isEmpty());
    EXPECT_TRUE(refunds.reasonField()->text().isEmpty());
    receipt->reject();

    // Lines returned in full are no longer offered.
    QTest::keyClicks(refunds.receiptField(), sale->invoiceNumber());
    QTest::keyClick(refunds.receiptField(), Qt::Key_Return);
    ASSERT_EQ(refunds.lineRows().size(), 2);
    EXPECT_EQ(refunds.lineRows()[0]->detailLabel()->text(), "Purchased 3 · 1 eligible to return");
    EXPECT_EQ(refunds.methodPicker()->currentIndex(), 2) << "the method stays for the next refund";
}
