#include "ui/pos/paymentsheetview.h"

#include "money/numberentry.h"
#include "pos/posscene.h"
#include "ui/controls/screentest.h"
#include "ui/controls/segmentedcontrol.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

// Keys 30 ms apart each way, as a person types; a scanner's come within a millisecond or two.
void typeByHand(QWidget* widget, const QString& text)
{
    QTest::keyClicks(widget, text, Qt::NoModifier, 30);
}

// The pause before it only: the sheet may be gone by the time the key is let go.
void pressReturnByHand(QWidget* widget)
{
    QTest::qWait(60);
    QTest::keyClick(widget, Qt::Key_Return);
}

// The payment sheet over a workspace whose cart holds one product at `price`.
struct PaymentSheetViewTest : POSTest {
    QWidget host;
    QPointer<PaymentSheetView> view;

    void openSheet(double price, const Ref<Customer>& customer = nullptr)
    {
        pos->addToCart(coded("Rice", "RICE", "600100", price));
        if (customer)
            pos->setCustomer(customer);
        ASSERT_TRUE(pos->startCheckout());
        host.show();
        view = new PaymentSheetView(*pos->paymentSheet(), &host);
        view->setAttribute(Qt::WA_DeleteOnClose);
        view->open();
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    }

    bool sheetClosed()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !view;
    }

    QList<Ref<Payment>> paid() const
    {
        return pos->lastCompletedSale() ? pos->lastCompletedSale()->payments() : QList<Ref<Payment>>{};
    }
};

} // namespace

TEST_F(PaymentSheetViewTest, CashTypedByHandShowsTheChangeAndReturnCompletesTheSale)
{
    openSheet(12.5);
    EXPECT_EQ(QApplication::focusWidget(), view->cashTenderedField()) << "the cashier types the cash at once";
    EXPECT_TRUE(visibleTexts(view).contains("₵12.50"));

    typeByHand(view->cashTenderedField(), QStringLiteral("1,000"));
    EXPECT_EQ(view->changeDueLabel()->text(), "₵987.50") << "en_US grouping is read";
    view->cashTenderedField()->clear();
    typeByHand(view->cashTenderedField(), QStringLiteral("12,5"));
    EXPECT_TRUE(visibleTexts(view).contains(NumberEntry::moneyProblem())) << "refused at the field";
    QTest::keyClick(view->cashTenderedField(), Qt::Key_A, Qt::ControlModifier);
    typeByHand(view->cashTenderedField(), QStringLiteral("20"));
    EXPECT_EQ(view->changeDueLabel()->text(), "₵7.50");

    pressReturnByHand(view->cashTenderedField());
    ASSERT_EQ(paid().size(), 1);
    EXPECT_DOUBLE_EQ(paid()[0]->tenderedAmount(), 20);
    EXPECT_DOUBLE_EQ(paid()[0]->changeGiven(), 7.5);
    EXPECT_TRUE(sheetClosed()) << "the sheet goes with the model the workspace let go of";
}

TEST_F(PaymentSheetViewTest, FunctionKeysTenderQuickCashAndAltDigitsChooseTheModeKeepingWhatWasTyped)
{
    openSheet(12.5);
    QList<QString> shown;
    for (QPushButton* button : view->quickCashButtons())
        if (button->isVisibleTo(view))
            shown << button->text();
    EXPECT_EQ(shown, (QList<QString>{"₵12.50   F1", "₵20.00   F2", "₵50.00   F3"}));

    QTest::keyClick(view, Qt::Key_F2);
    EXPECT_EQ(view->cashTenderedField()->text(), "20.00");
    EXPECT_EQ(view->changeDueLabel()->text(), "₵7.50");

    QTest::keyClick(view, Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(pos->paymentSheet()->mode(), PaymentSheetModel::Mode::card);
    EXPECT_EQ(view->modePicker()->currentIndex(), 1);
    EXPECT_TRUE(visibleTexts(view).contains("Full amount of ₵12.50 will be charged."));
    typeByHand(QApplication::focusWidget(), QStringLiteral("A1"));
    EXPECT_EQ(pos->paymentSheet()->referenceText(), "A1") << "the card's reference field has the focus";

    QTest::keyClick(view, Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), view->cashTenderedField());
    EXPECT_EQ(view->cashTenderedField()->text(), "20.00");

    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(pos->paymentSheet(), nullptr) << "Escape cancels";
    EXPECT_TRUE(sheetClosed());
    EXPECT_EQ(pos->cart().lines().size(), 1);
}

TEST_F(PaymentSheetViewTest, SplitOfMobileMoneyAndCashWithChangeCompletesThroughReturn)
{
    openSheet(12.5);
    QTest::keyClick(view, Qt::Key_5, Qt::AltModifier);
    view->addPaymentMethodButton()->click();
    view->addPaymentMethodButton()->click();
    ASSERT_EQ(view->splitRowWidgets().size(), 2);
    const auto rows = view->splitRowWidgets();

    QTest::keyClick(rows[0].method, Qt::Key_Down);
    QTest::keyClick(rows[0].method, Qt::Key_Down);
    EXPECT_EQ(rows[0].method->currentText(), "Mobile Money");
    EXPECT_FALSE(rows[0].tendered->isVisibleTo(view)) << "only cash is tendered";
    typeByHand(rows[0].amount, QStringLiteral("5"));
    EXPECT_EQ(view->remainingLabel()->text(), "₵7.50");
    typeByHand(rows[1].amount, QStringLiteral("7.50"));
    EXPECT_EQ(view->remainingLabel()->text(), "₵0.00");
    typeByHand(rows[1].tendered, QStringLiteral("10"));

    pressReturnByHand(rows[1].tendered);
    ASSERT_EQ(paid().size(), 2);
    EXPECT_EQ(paid()[0]->method(), PaymentMethodType::mobileMoney);
    EXPECT_EQ(paid()[1]->method(), PaymentMethodType::cash);
    EXPECT_DOUBLE_EQ(paid()[1]->changeGiven(), 2.5);
    EXPECT_TRUE(sheetClosed());
}

TEST_F(PaymentSheetViewTest, PointsReminderShowsOnceAndARedemptionMovesTheTotalsButNotTheTypedCash)
{
    openSheet(30, scene.customer("Kofi", 500));
    EXPECT_EQ(view->useMostButton()->text(), "Use 500");
    typeByHand(view->cashTenderedField(), QStringLiteral("40"));

    pressReturnByHand(view->cashTenderedField());
    QMessageBox* reminder = openBox(view);
    ASSERT_NE(reminder, nullptr);
    EXPECT_EQ(reminder->text(), "Kofi has 500 points");
    clickButton(reminder, QStringLiteral("Redeem Points"));
    EXPECT_EQ(openBox(view), nullptr);
    EXPECT_EQ(pos->lastCompletedSale(), nullptr) << "back on the sheet to ask the customer";
    EXPECT_EQ(QApplication::focusWidget(), view->pointsField());

    view->useMostButton()->click();
    EXPECT_TRUE(visibleTexts(view).contains("₵5.00")) << "25.00 of points off 30.00";
    EXPECT_EQ(view->cashTenderedField()->text(), "40");
    EXPECT_EQ(view->changeDueLabel()->text(), "₵35.00");
    view->removePointsButton()->click();
    EXPECT_TRUE(visibleTexts(view).contains("₵30.00"));
    EXPECT_TRUE(view->useMostButton()->isVisibleTo(view));

    pressReturnByHand(view->cashTenderedField());
    EXPECT_NE(pos->lastCompletedSale(), nullptr) << "asked once each time the sheet opens";
    EXPECT_TRUE(sheetClosed());
}

// A scan typed into Cash Tendered ends in Return: it must not complete the sale with a 13-digit
// amount, and the field must hold the cash typed before.
TEST_F(PaymentSheetViewTest, ScannerBurstIsRefusedAndTheFieldRestored)
{
    openSheet(12.5);
    typeByHand(view->cashTenderedField(), QStringLiteral("20"));
    QTest::qWait(60);
    QTest::keyClicks(view->cashTenderedField(), QStringLiteral("6001234567890"));
    QTest::keyClick(view->cashTenderedField(), Qt::Key_Return);

    EXPECT_EQ(pos->lastCompletedSale(), nullptr);
    EXPECT_EQ(view->cashTenderedField()->text(), "20");
    EXPECT_EQ(pos->paymentSheet()->cashTenderedText(), "20") << "the model hears the field put back";
    EXPECT_TRUE(visibleTexts(view).contains(PaymentSheetView::scanRefusedMessage()));

    // The same scan with the focus on a button: no Return of it reaches Complete Sale.
    view->completeButton()->setFocus();
    QTest::qWait(60);
    QTest::keyClicks(view->completeButton(), QStringLiteral("6001234567890"));
    QTest::keyClick(view->completeButton(), Qt::Key_Return);
    EXPECT_EQ(pos->lastCompletedSale(), nullptr);

    pressReturnByHand(view->cashTenderedField());
    ASSERT_EQ(paid().size(), 1) << "a Return by hand still completes";
    EXPECT_DOUBLE_EQ(paid()[0]->tenderedAmount(), 20);
}
