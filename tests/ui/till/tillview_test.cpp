#include "ui/till/tillview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/numerickeypad.h"
#include "ui/controls/screentest.h"
#include "ui/controls/segmentedcontrol.h"

#include "records/cashmovement.h"

#include <QLineEdit>
#include <QPushButton>

namespace {
// Signed in as a cashier: cashiers reach the till too.
class TillViewTest : public ScreenTest {
protected:
    TillView& signInAndOpenTill()
    {
        signIn();
        return goTo<TillView>(QStringLiteral("Till & Shifts"));
    }
};
} // namespace

TEST_F(TillViewTest, AShiftOpensMovesCashAndClosesIntoTheHistory)
{
    TillView& till = signInAndOpenTill();
    EXPECT_FALSE(till.isShowingOpenShift());
    EXPECT_TRUE(till.historyList()->isHidden());

    // The float typed, then finished on the keypad.
    QTest::keyClicks(till.openingFloatField(), "10");
    QList<QPushButton*> keys = till.keypad()->findChildren<QPushButton*>();
    const auto zero =
        std::find_if(keys.begin(), keys.end(), [](QPushButton* key) { return key->text() == "0"; });
    ASSERT_NE(zero, keys.end());
    (*zero)->click();
    EXPECT_EQ(till.openingFloatField()->text(), "100");
    QTest::keyClick(till.openingFloatField(), Qt::Key_Return);
    ASSERT_TRUE(till.isShowingOpenShift());
    ASSERT_NE(session.currentTillShift(), nullptr);
    EXPECT_EQ(session.currentTillShift()->cashier(), user);
    EXPECT_EQ(till.openingFloatFigure()->text(), "₵100.00");
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵100.00");
    EXPECT_TRUE(till.accountCashFigure()->isHidden() || !till.accountCashFigure()->isVisibleTo(&till))
        << "no account payments yet";

    QTest::keyClicks(till.payAmountField(), "20");
    QTest::keyClick(till.payAmountField(), Qt::Key_Return);
    QTest::keyClicks(till.payReasonField(), "Float top-up");
    QTest::keyClick(till.payReasonField(), Qt::Key_Return);
    EXPECT_EQ(till.payAmountField()->text(), "");
    EXPECT_EQ(till.payReasonField()->text(), "");
    QTest::mouseClick(till.payTypePicker()->segment(1), Qt::LeftButton);
    QTest::keyClicks(till.payAmountField(), "30");
    QTest::keyClicks(till.payReasonField(), "Cleaner");
    till.recordMovementButton()->click();
    EXPECT_EQ(till.payTypePicker()->currentIndex(), 1) << "the type stays for the next one";
    ASSERT_EQ(till.movementList()->rowCount(), 2);
    EXPECT_EQ(rowTexts(*till.movementList(), 0).mid(1), (QStringList{"Paid In", "Float top-up", "₵20.00"}));
    EXPECT_EQ(rowTexts(*till.movementList(), 1).mid(1), (QStringList{"Paid Out", "Cleaner", "-₵30.00"}));
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵90.00");

    QTest::keyClicks(till.countedCashField(), "88.5");
    QTest::keyClick(till.countedCashField(), Qt::Key_Return);
    EXPECT_TRUE(till.isShowingOpenShift()) << "Return alone never closes the till";
    QTest::keyClicks(till.notesField(), "Coins short");
    till.closeButton()->click();

    EXPECT_FALSE(till.isShowingOpenShift());
    EXPECT_EQ(session.currentTillShift(), nullptr);
    EXPECT_TRUE(till.closedResult()->isVisible());
    const QStringList closedTexts = visibleTexts(till.closedResult());
    EXPECT_TRUE(closedTexts.contains("Short ₵1.50")) << closedTexts.join(" | ").toStdString();
    ASSERT_EQ(till.historyList()->rowCount(), 1);
    EXPECT_EQ(rowTexts(*till.historyList(), 0).mid(1),
              (QStringList{"Esi", "Expected ₵90.00", "Counted ₵88.50", "Short ₵1.50"}));
    EXPECT_EQ(till.historyList()->item(0, 4)->foreground().color(), QColor(0xc6, 0x28, 0x28));

    store.reopen();
    const QList<Ref<TillShift>> shifts = store.context().fetch<TillShift>();
    ASSERT_EQ(shifts.size(), 1);
    EXPECT_EQ(shifts[0]->variance(), -1.5);
    EXPECT_EQ(shifts[0]->notes(), "Coins short");
}

// The messages themselves are the till view model's; here they must show, and go.
TEST_F(TillViewTest, ARefusedAmountShowsItsMessageAndStaysForCorrecting)
{
    TillView& till = signInAndOpenTill();
    QTest::keyClicks(till.openingFloatField(), "-5");
    till.openButton()->click();
    EXPECT_FALSE(till.isShowingOpenShift());
    EXPECT_TRUE(till.errorLabel()->isVisible());
    EXPECT_EQ(till.openingFloatField()->text(), "-5");

    till.openingFloatField()->selectAll();
    QTest::keyClick(till.openingFloatField(), Qt::Key_Backspace);
    QTest::keyClick(till.openingFloatField(), Qt::Key_Return);
    ASSERT_TRUE(till.isShowingOpenShift());
    EXPECT_EQ(session.currentTillShift()->openingFloat(), 0) << "a blank float is none";
    EXPECT_FALSE(till.errorLabel()->isVisible());
}

TEST_F(TillViewTest, FollowsAShiftOpenedAndClosedElsewhere)
{
    TillView& till = signInAndOpenTill();
    // Another screen of the program opens and closes the till through the same services.
    const Ref<TillShift> shift = environment.tillService().openShift(user, 40);
    session.setCurrentTillShift(shift);
    ASSERT_TRUE(till.isShowingOpenShift());
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵40.00");
    EXPECT_TRUE(till.sinceLabel()->text().startsWith("Since "));

    environment.tillService().closeShift(shift, 45, QString());
    session.setCurrentTillShift(nullptr);
    EXPECT_FALSE(till.isShowingOpenShift());
    EXPECT_FALSE(till.closedResult()->isVisible()) << "only a close made here reports its result";
    ASSERT_EQ(till.historyList()->rowCount(), 1);
    EXPECT_EQ(till.historyList()->item(0, 4)->text(), "Over ₵5.00");
    EXPECT_EQ(till.historyList()->item(0, 4)->foreground().color(), QColor(0x1d, 0x5f, 0xa8));
}
