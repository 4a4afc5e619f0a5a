#include "ui/till/tillview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/numerickeypad.h"
#include "ui/controls/screentest.h"
#include "ui/controls/segmentedcontrol.h"

#include "ui/till/shiftdetailsheet.h"
#include "ui/till/shifthistorymodel.h"

#include "records/cashmovement.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {
// Signed in as a cashier: cashiers reach the till too.
class TillViewTest : public ScreenTest {
protected:
    TillView& openTill()
    {
        signIn();
        return goTo<TillView>(QStringLiteral("Till & Shifts"));
    }

    static QColor historyColour(const TillView& till, int row)
    {
        return till.historyList()->model()->index(row, 4).data(Qt::ForegroundRole).value<QBrush>().color();
    }
};
} // namespace

// The sums and refusals are the till view model's; here each control reaches it.
TEST_F(TillViewTest, AShiftOpensMovesCashAndClosesIntoTheHistory)
{
    TillView& till = openTill();
    QTest::keyClicks(till.openingFloatField(), "-5");
    till.openButton()->click();
    EXPECT_TRUE(till.errorLabel()->isVisible());
    EXPECT_EQ(till.openingFloatField()->text(), "-5") << "kept for correcting";

    // Finished on the keypad.
    till.openingFloatField()->selectAll();
    QTest::keyClicks(till.openingFloatField(), "10");
    for (QPushButton* key : till.keypad()->findChildren<QPushButton*>())
        if (key->text() == "0")
            key->click();
    EXPECT_EQ(till.openingFloatField()->text(), "100");
    QTest::keyClick(till.openingFloatField(), Qt::Key_Return);
    ASSERT_TRUE(till.isShowingOpenShift());
    EXPECT_FALSE(till.errorLabel()->isVisible());
    EXPECT_EQ(session.currentTillShift()->cashier(), user);

    QTest::keyClicks(till.payAmountField(), "20");
    QTest::keyClick(till.payAmountField(), Qt::Key_Return);
    QTest::keyClicks(till.payReasonField(), "Float top-up");
    QTest::keyClick(till.payReasonField(), Qt::Key_Return);
    QTest::mouseClick(till.payTypePicker()->segment(1), Qt::LeftButton);
    QTest::keyClicks(till.payAmountField(), "30");
    QTest::keyClicks(till.payReasonField(), "Cleaner");
    till.recordMovementButton()->click();
    EXPECT_EQ(till.payAmountField()->text(), "");
    EXPECT_EQ(rowTexts(*till.movementList(), 1).mid(1), (QStringList{"Paid Out", "Cleaner", "-₵30.00"}));
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵90.00");

    QTest::keyClicks(till.countedCashField(), "88.5");
    QTest::keyClick(till.countedCashField(), Qt::Key_Return);
    EXPECT_TRUE(till.isShowingOpenShift()) << "Return alone never closes the till";
    QTest::keyClicks(till.notesField(), "Coins short");
    till.closeButton()->click();
    EXPECT_EQ(session.currentTillShift(), nullptr);
    EXPECT_TRUE(visibleTexts(till.closedResult()).contains("Short ₵1.50"));
    EXPECT_EQ(rowTexts(*till.historyList(), 0).mid(1),
              (QStringList{"Esi", "Expected ₵90.00", "Counted ₵88.50", "Short ₵1.50"}));
    EXPECT_EQ(historyColour(till, 0), QColor(0xc6, 0x28, 0x28));
    store.reopen();
    EXPECT_EQ(store.context().fetchFirst<TillShift>()->notes(), "Coins short");
}

TEST_F(TillViewTest, FollowsAShiftOpenedAndClosedElsewhere)
{
    TillView& till = openTill();
    const Ref<TillShift> shift = environment.tillService().openShift(user, 40);
    session.setCurrentTillShift(shift);
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵40.00");
    environment.tillService().closeShift(shift, 45, QString());
    session.setCurrentTillShift(nullptr);
    EXPECT_FALSE(till.isShowingOpenShift());
    EXPECT_FALSE(till.closedResult()->isVisible()) << "only a close made here reports its result";
    EXPECT_EQ(historyColour(till, 0), QColor(0x1d, 0x5f, 0xa8)) << "over";
}

TEST_F(TillViewTest, APastShiftOpensItsDetailAndTheHistoryLoadsAsItScrolls)
{
    TillView& till = openTill();
    TillService& service = environment.tillService();
    for (int day = 0; day < 55; ++day) {
        const Ref<TillShift> old = service.openShift(user, 0);
        old->setOpenedAt(old->openedAt().addDays(day - 60));
        store.context().save();
        service.closeShift(old, 0, QString(), user);
    }
    const Ref<TillShift> shift = service.openShift(user, 100);
    till.model().setPayAmountText(QStringLiteral("20"));
    till.model().setPayReason(QStringLiteral("Change from the bank"));
    ASSERT_TRUE(till.model().recordCashMovement(shift));
    till.model().setCountedCashText(QStringLiteral("120"));
    ASSERT_TRUE(till.model().closeShift(shift));
    QCoreApplication::processEvents();

    QTableView* history = till.historyList();
    EXPECT_EQ(history->model()->rowCount(), 50) << "a page at a time";
    history->scrollToBottom();
    EXPECT_EQ(history->model()->rowCount(), 56);

    history->scrollToTop();
    QTest::mouseClick(history->viewport(), Qt::LeftButton, {}, history->visualRect(history->model()->index(0, 1)).center());
    ShiftDetailSheet* sheet = till.detailSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->shiftID(), shift->id());
    EXPECT_TRUE(sheet->closedLabel()->text().startsWith("Closed by Esi at "));
    EXPECT_EQ(sheet->varianceFigure()->text(), "Balanced");
    EXPECT_EQ(rowTexts(*sheet->movementList(), 0).mid(1),
              (QStringList{"Paid In", "Change from the bank", "Esi", "₵20.00"}));
    sheet->primaryButton()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(till.detailSheet(), nullptr);
}
