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
} // namespace
