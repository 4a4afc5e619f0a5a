#include "till/shiftdetailmodel.h"
#include "till/tillviewmodel.h"

#include "access/userbuilder.h"
#include "clock/clock.h"
#include "customers/accountbuilders.h"
#include "records/cashmovement.h"
#include "records/sale.h"
#include "records/user.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {
class TillViewModelTest : public ::testing::Test {
protected:
    Ref<TillShift> closedShift(const QDateTime& openedAt)
    {
        const Ref<TillShift> shift = addShift(context, 10);
        shift->setOpenedAt(openedAt);
        shift->setClosedAt(openedAt.addSecs(3600));
        shift->setStatusRaw(TillService::closedStatus());
        context.save();
        return shift;
    }

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
    session.setCurrentUser(addUser(context));
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
// Shifts opened in the same second must neither repeat nor go missing across a page's edge.
TEST_F(TillViewModelTest, PagesByKeyNewestFirstWithoutTheOpenShift)
{
    const QDateTime monday = localAt(2025, 6, 2, 9);
    QList<Ref<TillShift>> closed;
    for (int day : {0, 1, 1, 1, 2, 3, 3})
        closed.append(closedShift(monday.addDays(day)));
    const Ref<TillShift> open = addShift(context, 0);
    open->setOpenedAt(monday.addDays(4));
    context.save();

    std::sort(closed.begin(), closed.end(), [](const Ref<TillShift>& a, const Ref<TillShift>& b) {
        return a->openedAt() != b->openedAt() ? a->openedAt() > b->openedAt() : a->idText() > b->idText();
    });
    for (int limit : {1, 2, 3, 50}) {
        QList<QUuid> listed;
        std::optional<ShiftHistory::Key> after;
        for (int page = 0; page < 10; ++page) {
            const QList<ShiftHistoryRow> rows = model.historyPage(after, limit);
            for (const ShiftHistoryRow& row : rows)
                listed.append(row.shiftID());
            if (rows.size() < limit)
                break;
            after = rows.last().key;
        }
        QList<QUuid> expected;
        for (const Ref<TillShift>& shift : closed)
            expected.append(shift->id());
        EXPECT_EQ(listed, expected) << "pages of " << limit;
    }
    EXPECT_EQ(model.errorMessage(), std::nullopt);
}

// Float 100, a cash sale of 50, a cash refund of 10, a voided sale, pay-in 20, pay-out 30: the drawer
// should hold 130, and the count of 128.50 is short by 1.50.
TEST_F(TillViewModelTest, DetailShowsWhoWhenTheCashMovementsAndTheSales)
{
    const Ref<User> esi = addUser(context, {.username = QStringLiteral("esi"), .name = QStringLiteral("Esi")});
    const Ref<User> kofi = addUser(context, {.username = QStringLiteral("kofi"), .name = QStringLiteral("Kofi")});
    std::optional<Clock::Override> clock;
    const auto at = [&](int hour, int minute) { clock.emplace(localAt(2025, 6, 3, hour, minute)); };

    at(9, 5);
    session.setCurrentUser(esi);
    model.setOpeningFloatText(QStringLiteral("100"));
    ASSERT_TRUE(model.openShift());
    const Ref<TillShift> shift = session.currentTillShift();
    at(10, 0);
    model.setPayAmountText(QStringLiteral("20"));
    model.setPayReason(QStringLiteral("Float top-up"));
    ASSERT_TRUE(model.recordCashMovement(shift));
    const Ref<Sale> sale = addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, 50, 60}}});
    const Ref<Sale> refund = addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, -10}}});
    refund->setRefundOfSaleID(sale->id());
    const Ref<Sale> voided = addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, 99}}});
    voided->setStatusRaw(SaleStatuses::raw(SaleStatus::voided));
    addSale(context, {.shift = addShift(context), .tenders = {{PaymentMethodType::cash, 7}}});
    at(14, 30);
    session.setCurrentUser(kofi);
    model.setPayType(CashMovementType::payOut);
    model.setPayAmountText(QStringLiteral("30"));
    model.setPayReason(QStringLiteral("Cleaner"));
    ASSERT_TRUE(model.recordCashMovement(shift));
    at(17, 30);
    model.setCountedCashText(QStringLiteral("128.50"));
    ASSERT_TRUE(model.closeShift(shift));

    ShiftDetailModel details(context);
    std::optional<ShiftDetail> detail = details.detail(shift->id());
    ASSERT_TRUE(detail.has_value());
    EXPECT_EQ(detail->title, QStringLiteral("Shift of Jun 3, 2025"));
    EXPECT_EQ(detail->openedText, QStringLiteral("Opened by Esi at 9:05 AM"));
    EXPECT_EQ(detail->closedText, QStringLiteral("Closed by Kofi at 5:30 PM"));
    EXPECT_EQ(detail->openingFloat, 100);
    EXPECT_EQ(detail->expectedCash, 130);
    EXPECT_EQ(detail->countedCash, 128.5);
    EXPECT_EQ(detail->varianceText, QStringLiteral("Short ₵1.50"));
    EXPECT_EQ(detail->tone, ShiftHistoryRow::Tone::shortOfCash);
    EXPECT_EQ(detail->paidIn, 20);
    EXPECT_EQ(detail->paidOut, 30);
    ASSERT_EQ(detail->movements.size(), 2);
    EXPECT_EQ(detail->movements[0].performedBy, QStringLiteral("Esi"));
    EXPECT_EQ(detail->movements[1].reason, QStringLiteral("Cleaner"));
    EXPECT_EQ(detail->movements[1].signedAmount(), -30);
    EXPECT_EQ((std::array{detail->sales, detail->refunds, detail->voided}), (std::array<qint64, 3>{1, 1, 1}));

    // A void after the close moves the counts, never the cash the drawer was closed on.
    sale->setStatusRaw(SaleStatuses::raw(SaleStatus::voided));
    context.save();
    detail = details.detail(shift->id());
    ASSERT_TRUE(detail.has_value());
    EXPECT_EQ((std::array{detail->sales, detail->refunds, detail->voided}), (std::array<qint64, 3>{0, 1, 2}));
    EXPECT_EQ(detail->expectedCash, 130);

    EXPECT_FALSE(details.detail(QUuid::createUuid()).has_value()) << "a shift that is gone";
}
} // namespace
