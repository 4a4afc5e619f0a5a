#include "ui/refunds/refundview.h"

#include "ui/access/approvalsheet.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/receipts/receiptview.h"
#include "ui/refunds/refundlinerow.h"

#include "ui/salesscreentest.h"

#include <QLineEdit>
#include <QPushButton>

using RefundViewTest = SalesScreenTest;

// The amounts, refusals and the log are the view model's; here each control reaches it.
TEST_F(RefundViewTest, ACashierRefundsPartOfASaleWithAnAdminsPinAndSeesTheRefundReceipt)
{
    const Ref<Product> rice = scene.product({.name = "Rice", .price = 8, .stock = 50, .unit = SellingUnit::kg});
    signIn(UserRole::cashier);
    performUnitOfWork(store.context(), [&] { session.settings()->setApproveRefunds(true); });
    Cart cart;
    cart.addOrIncrement(soap, 3);
    cart.addOrIncrement(rice, 1.5);
    const Ref<Sale> sale = environment.salesService().checkout(
        cart, SalesScene::paidBy(cart, *session.settings()), user, nullptr, *session.settings());
    RefundView& refunds = goTo<RefundView>(QStringLiteral("Refunds"));

    QTest::keyClicks(refunds.receiptField(), "INV-20260309-0009");
    QTest::keyClick(refunds.receiptField(), Qt::Key_Return);
    EXPECT_TRUE(refunds.errorLabel()->isVisible());
    refunds.receiptField()->clear();
    QTest::keyClicks(refunds.receiptField(), sale->invoiceNumber());
    refunds.findButton()->click();
    ASSERT_TRUE(refunds.isShowingSale());
    ASSERT_EQ(refunds.lineRows().size(), 2);
    RefundLineRow* soapRow = refunds.lineRows()[0];
    EXPECT_EQ(refunds.lineRows()[1]->detailLabel()->text(), "Purchased 1.5 kg · 1.5 kg eligible to return");
    EXPECT_FALSE(refunds.processButton()->isEnabled());

    soapRow->moreButton()->click();
    soapRow->moreButton()->click();
    EXPECT_EQ(soapRow->stepperValue()->text(), "2");
    QTest::keyClicks(refunds.lineRows()[1]->quantityField(), "0,5");
    EXPECT_EQ(refunds.amountLabel()->text(), "₵24.00");
    QTest::mouseClick(refunds.methodPicker()->segment(2), Qt::LeftButton);
    QTest::keyClicks(refunds.reasonField(), "Too salty");
    refunds.processButton()->click();
    auto* approval = refunds.findChild<ApprovalSheet*>();
    ASSERT_NE(approval, nullptr);
    QTest::keyClicks(approval->pinField(), "4321");
    approval->primaryButton()->click();

    const Ref<Sale> refund = refunds.model().completedRefund();
    ASSERT_NE(refund, nullptr);
    EXPECT_DOUBLE_EQ(refund->total(), -24);
    EXPECT_EQ(refund->payments().first()->method(), PaymentMethodType::mobileMoney);
    EXPECT_EQ(refund->refundReason(), "Too salty");
    auto* receipt = refunds.findChild<ReceiptView*>();
    ASSERT_NE(receipt, nullptr) << "the refund's receipt is shown";
    EXPECT_EQ(receipt->windowTitle(), "Refund receipt INV-20260309-0002");
    EXPECT_FALSE(refunds.isShowingSale()) << "ready for the next receipt";
    EXPECT_TRUE(refunds.reasonField()->text().isEmpty());
    receipt->reject();
}
