#include "till/tillviewmodel.h"

#include "customers/accountbuilders.h"
#include "records/cashmovement.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
class TillViewModelTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    TillService till{context};
    AccountsService accounts{context};
    SessionStore session;
    TillViewModel model{till, accounts, context, session};
};

TEST_F(TillViewModelTest, BlankFloatOpensAtZeroAndASecondOpenIsRefused)
{
    EXPECT_TRUE(model.openShift());
    ASSERT_NE(session.currentTillShift(), nullptr);
    EXPECT_EQ(session.currentTillShift()->openingFloat(), 0);

    TillViewModel elsewhere(till, accounts, context, session);
    elsewhere.setOpeningFloatText(QStringLiteral("50"));
    EXPECT_FALSE(elsewhere.openShift());
    EXPECT_EQ(elsewhere.errorMessage(), QStringLiteral("A till shift is already open for this cashier."));
}

TEST_F(TillViewModelTest, CashMovementNeedsAnAmountAboveZeroAndKeepsTheType)
{
    const Ref<TillShift> shift = addShift(context, 100.0);
    model.setPayType(CashMovementType::payOut);
    model.setPayReason(QStringLiteral("Fuel"));
    for (const char* typed : {"", "abc", "0", "-3"}) {
        model.setPayAmountText(QString::fromUtf8(typed));
        EXPECT_FALSE(model.recordCashMovement(shift)) << typed;
        EXPECT_EQ(model.errorMessage(), QStringLiteral("Enter an amount greater than zero.")) << typed;
    }
    model.setPayAmountText(QStringLiteral("30"));
    EXPECT_TRUE(model.recordCashMovement(shift));
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ(model.payAmountText(), QString());
    EXPECT_EQ(model.payReason(), QString());
    EXPECT_EQ(model.payType(), CashMovementType::payOut);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("CashMovement")), 1);
    EXPECT_EQ(model.figures(shift).expectedCash, 70);
}

TEST_F(TillViewModelTest, CloseClearsTheSessionsShiftOnlyWhenItIsTheOneClosed)
{
    ASSERT_TRUE(model.openShift());
    const Ref<TillShift> open = session.currentTillShift();
    const Ref<TillShift> stale = addShift(context, 0.0);

    model.setCountedCashText(QStringLiteral("5"));
    ASSERT_TRUE(model.closeShift(stale));
    EXPECT_EQ(session.currentTillShift(), open);
    model.setClosingNotes(QStringLiteral("all good"));
    ASSERT_TRUE(model.closeShift(open)); // blank count closes at 0
    EXPECT_EQ(session.currentTillShift(), nullptr);
    EXPECT_EQ(open->countedCash(), 0);
    EXPECT_EQ(open->notes(), QStringLiteral("all good"));
    EXPECT_EQ(model.closingNotes(), QString());
    EXPECT_EQ(model.backupMessage(), std::nullopt);
}

TEST_F(TillViewModelTest, HistoryRowsNameTheVariance)
{
    const struct {
        std::optional<double> variance;
        const char* text;
        ShiftHistoryRow::Tone tone;
    } cases[] = {
        {std::nullopt, "", ShiftHistoryRow::Tone::neutral},
        {0.0, "Balanced", ShiftHistoryRow::Tone::balanced},
        {-0.0, "Balanced", ShiftHistoryRow::Tone::balanced},
        {-0.01, "Short ₵0.01", ShiftHistoryRow::Tone::shortOfCash},
        {1234.5, "Over ₵1,234.50", ShiftHistoryRow::Tone::over},
    };
    for (const auto& c : cases) {
        auto shift = std::make_shared<TillShift>();
        shift->setVariance(c.variance);
        shift->setExpectedCash(150);
        const ShiftHistoryRow row = ShiftHistoryRow::make(shift);
        EXPECT_EQ(row.varianceText, QString::fromUtf8(c.text));
        EXPECT_EQ(row.tone, c.tone) << c.text;
        EXPECT_EQ(row.expectedText, QStringLiteral("Expected ₵150.00"));
    }

    // The open shift is left out of the history; closed ones come newest first.
    const Ref<TillShift> older = addShift(context, 0.0);
    older->setOpenedAt(localAt(2026, 1, 1));
    older->setStatusRaw(QStringLiteral("closed"));
    const Ref<TillShift> newer = addShift(context, 0.0);
    newer->setOpenedAt(localAt(2026, 1, 2));
    newer->setStatusRaw(QStringLiteral("closed"));
    context.save();
    ASSERT_TRUE(model.openShift());
    const QList<ShiftHistoryRow> history = model.shiftHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[0].shift, newer);
    EXPECT_EQ(history[1].shift, older);
}
} // namespace
