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
    ApprovalService approvals{context};
    TillViewModel model{till, accounts, approvals, context, session};
};

TEST_F(TillViewModelTest, CashMovementNeedsAnAmountAboveZero)
{
    const Ref<TillShift> shift = addShift(context, 100.0);
    model.setPayType(CashMovementType::payOut);
    model.setPayReason(QStringLiteral("Fuel"));
    const struct {
        const char* typed;
        const char* message;
    } refusals[] = {
        {"", "Enter an amount greater than zero."},
        {"0", "Enter an amount greater than zero."},
        {"-3", "Enter an amount greater than zero."},
        // Not a number at all: said so, never taken for 0.
        {"abc", "Enter an amount such as 1,250.00."},
    };
    for (const auto& refusal : refusals) {
        model.setPayAmountText(QString::fromUtf8(refusal.typed));
        EXPECT_FALSE(model.recordCashMovement(shift)) << refusal.typed;
        EXPECT_EQ(model.errorMessage(), QString::fromUtf8(refusal.message)) << refusal.typed;
    }
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("CashMovement")), 0);
    model.setPayAmountText(QStringLiteral("30"));
    EXPECT_TRUE(model.recordCashMovement(shift));
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("CashMovement")), 1);
    EXPECT_EQ(model.figures(shift).expectedCash, 70);
}

TEST_F(TillViewModelTest, APayOutCantTakeMoreThanTheDrawerHoldsAndIsInTheAuditLog)
{
    const Ref<TillShift> shift = addShift(context, 150.0);
    model.setPayType(CashMovementType::payOut);
    model.setPayReason(QStringLiteral("Fuel"));
    model.setPayAmountText(QStringLiteral("5,000.00"));
    EXPECT_FALSE(model.recordCashMovement(shift));
    EXPECT_EQ(model.errorMessage(),
              QStringLiteral("That's more than the cash the drawer should hold. Count the drawer, or pay out less."));
    model.setPayAmountText(QStringLiteral("150.01"));
    EXPECT_FALSE(model.recordCashMovement(shift));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("CashMovement")), 0);

    // All of it may go, and what went is in the log under the name of who paid it out.
    const auto ama = std::make_shared<User>();
    ama->setName(QStringLiteral("Ama"));
    session.setCurrentUser(store.saved(ama));
    model.setPayAmountText(QStringLiteral("150"));
    EXPECT_TRUE(model.recordCashMovement(shift));
    const QList<QStringList> log =
        approvals.rows({QDate::currentDate().addDays(-1), QDate::currentDate().addDays(1), AuditAction::payOut, {}});
    ASSERT_EQ(log.size(), 1);
    EXPECT_EQ(log[0].mid(2, 5), (QStringList{QStringLiteral("Ama"), QStringLiteral("—"), QStringLiteral("₵150.00"),
                                            QString(), QStringLiteral("Fuel")}));
}

// Amounts in every accepted form are the money parser's tests; that the float and the count go
// through it, the fault loop's. Here: text that is no amount is refused, never taken for 0.
TEST_F(TillViewModelTest, CloseClearsTheSessionsShiftOnlyWhenItIsTheOneClosed)
{
    model.setOpeningFloatText(QStringLiteral("12,50"));
    EXPECT_FALSE(model.openShift());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("TillShift")), 0);
    model.setOpeningFloatText(QString());
    ASSERT_TRUE(model.openShift());
    const Ref<TillShift> open = session.currentTillShift();
    const Ref<TillShift> stale = addShift(context, 0.0);

    model.setCountedCashText(QStringLiteral("5"));
    ASSERT_TRUE(model.closeShift(stale));
    EXPECT_EQ(session.currentTillShift(), open);
    model.setCountedCashText(QString());
    EXPECT_FALSE(model.closeShift(open));
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Enter an amount such as 1,250.00."));
    model.setCountedCashText(QStringLiteral("0"));
    ASSERT_TRUE(model.closeShift(open));
    EXPECT_EQ(session.currentTillShift(), nullptr);
    EXPECT_EQ(open->countedCash(), 0);
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
