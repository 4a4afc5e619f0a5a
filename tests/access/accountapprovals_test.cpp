#include "access/accountapprovals.h"

#include "access/approvalservice.h"
#include "access/approvalsheetmodel.h"
#include "access/attemptthrottle.h"
#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "records/records.h"
#include "startup/sessionstore.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

namespace {

struct AccountApprovalsTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    ApprovalService approvalService{context};
    AccountsService accounts{context};
    LoyaltyService loyalty{context};
    SessionStore session;
    AccountApprovals approvals{approvalService, accounts, session};
    AttemptThrottle throttle;
    Ref<User> boss = addUser(context, {.username = QStringLiteral("boss"), .pin = QStringLiteral("2468"),
                                       .role = UserRole::admin, .name = QStringLiteral("Boss")});
    Ref<User> ama = addUser(context, {.pin = QStringLiteral("1111")});
    Ref<Customer> kofi = store.saved([] {
        auto made = std::make_shared<Customer>();
        made->setName(QStringLiteral("Kofi"));
        made->setLoyaltyPoints(40);
        return made;
    }());
    CustomerDetailModel detail{accounts, loyalty, context, session, kofi};
    AdjustPointsModel points{loyalty, session, kofi, nullptr};
    OpeningBalanceModel opening{accounts, session, kofi, nullptr};

    AccountApprovalsTest() { session.setSettings(store.saved(std::make_shared<AppSettings>())); }

    QList<Ref<AuditEntry>> log() { return context.fetch<AuditEntry>(); }
};

// One account change: how it is typed and started, and how it shows once made.
struct Change {
    const char* name;
    AuditAction action;
    std::function<std::optional<ApprovalRequest>(AccountApprovalsTest&)> start;
    std::function<bool(AccountApprovalsTest&)> isMade;
    std::optional<double> amount;
    const char* details;
    // The points sheet has a reason of its own; the others take the dialog's.
    bool asksReason = true;
};

const Change changes[] = {
    {"CreditSettings", AuditAction::customerCredit,
     [](AccountApprovalsTest& test) {
         test.detail.setAllowCredit(true);
         test.detail.setCreditLimitText(QStringLiteral("1,250.00"));
         return test.approvals.saveCustomer(test.detail);
     },
     [](AccountApprovalsTest& test) { return test.kofi->allowCredit() && test.kofi->creditLimit() == 1250; }, 1250,
     "Allow credit off → on; credit limit ₵0.00 → ₵1,250.00"},
    {"PointsAdjustment", AuditAction::pointsAdjustment,
     [](AccountApprovalsTest& test) {
         test.points.setDirection(AdjustPointsModel::Direction::remove);
         test.points.setPointsText(QStringLiteral("15"));
         test.points.setReason(QStringLiteral("correction"));
         return test.approvals.adjustPoints(test.points);
     },
     [](AccountApprovalsTest& test) { return test.kofi->loyaltyPoints() == 25; }, -15, "40 → 25 points", false},
    {"OpeningBalance", AuditAction::openingBalance,
     [](AccountApprovalsTest& test) {
         test.opening.setAmountText(QStringLiteral("1,250.00"));
         test.opening.setOwedSince(QDate(2025, 11, 3));
         test.opening.setNote(QStringLiteral("book p. 12"));
         return test.approvals.enterOpeningBalance(test.opening);
     },
     [](AccountApprovalsTest& test) { return test.accounts.balance(test.kofi) == 1250; }, 1250,
     "₵1,250.00 owed since 2025-11-03; book p. 12"},
    {"Delete", AuditAction::customerDeleted,
     [](AccountApprovalsTest& test) { return test.approvals.deleteCustomer(test.detail); },
     [](AccountApprovalsTest& test) { return test.kofi->isDeleted(); }, std::nullopt, "Owed ₵0.00; 40 points"},
};

[[maybe_unused]] void PrintTo(const Change& change, std::ostream* out)
{
    *out << change.name;
}

class EachChange : public AccountApprovalsTest, public ::testing::WithParamInterface<Change> {};

TEST_P(EachChange, ACashierWaitsForAnAdminsPinAndTheRowComesWithTheChange)
{
    const Change& change = GetParam();
    session.setCurrentUser(ama);
    std::optional<ApprovalRequest> request = change.start(*this);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->action, change.action);
    EXPECT_EQ(request->askReason, change.asksReason);
    EXPECT_FALSE(change.isMade(*this));

    ApprovalSheetModel sheet(*request, approvalService, throttle);
    for (const char* wrong : {"", "1111"}) { // none, and the cashier's own
        sheet.setPin(QString::fromUtf8(wrong));
        EXPECT_FALSE(sheet.approve());
        EXPECT_EQ(sheet.errorMessage(), QStringLiteral("That isn't an admin's PIN. Ask an admin to enter theirs."));
    }
    EXPECT_FALSE(change.isMade(*this));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("AuditEntry")), 0);

    sheet.setPin(QStringLiteral("2468"));
    sheet.setReason(QStringLiteral(" wrong account "));
    ASSERT_TRUE(sheet.approve()) << sheet.errorMessage().value_or(QString()).toStdString();
    EXPECT_TRUE(change.isMade(*this));
    const QList<Ref<AuditEntry>> rows = log();
    ASSERT_EQ(rows.size(), 1);
    const AuditEntry& row = *rows[0];
    EXPECT_EQ(row.actionRaw(), AuditActions::raw(change.action));
    EXPECT_EQ(row.cashierName(), QStringLiteral("Ama"));
    EXPECT_EQ(row.approverName(), QStringLiteral("Boss"));
    EXPECT_EQ(row.amount(), change.amount);
    EXPECT_EQ(row.reference(), QStringLiteral("Kofi"));
    EXPECT_EQ(row.reason(), change.asksReason ? QStringLiteral("wrong account") : QStringLiteral("correction"));
    EXPECT_EQ(row.details(), QString::fromUtf8(change.details));
}

TEST_P(EachChange, AnAdminsGoesThroughAtOnceAndIsLoggedAllTheSame)
{
    const Change& change = GetParam();
    session.setCurrentUser(boss);
    EXPECT_FALSE(change.start(*this));
    EXPECT_TRUE(change.isMade(*this));
    const QList<Ref<AuditEntry>> rows = log();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0]->cashierName(), QStringLiteral("Boss"));
    EXPECT_EQ(rows[0]->approverName(), QString());
    EXPECT_EQ(rows[0]->details(), QString::fromUtf8(change.details));
}

INSTANTIATE_TEST_SUITE_P(AccountApprovals, EachChange, ::testing::ValuesIn(changes),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AccountApprovalsTest, WhatLeavesCreditAloneNeedsNobodyAndIsNotLogged)
{
    session.setCurrentUser(ama);
    detail.setPhone(QStringLiteral("024 555 0101"));
    // A limit typed differently but the same amount is no change of credit.
    detail.setCreditLimitText(QStringLiteral("0.00"));
    EXPECT_FALSE(approvals.saveCustomer(detail));
    EXPECT_EQ(kofi->phone(), QStringLiteral("024 555 0101"));
    EXPECT_TRUE(log().isEmpty());
}

TEST_F(AccountApprovalsTest, AnOpeningBalanceTheSheetRefusesCallsNobodyOver)
{
    session.setCurrentUser(ama);
    opening.setAmountText(QStringLiteral("twelve"));
    EXPECT_FALSE(approvals.enterOpeningBalance(opening));
    EXPECT_EQ(opening.amountProblem(), QStringLiteral("Enter an amount such as 1,250.00."));

    opening.setAmountText(QStringLiteral("50"));
    ASSERT_TRUE(accounts.recordOpeningBalance(kofi, 20, QDate(2025, 1, 1), {}, nullptr));
    EXPECT_FALSE(approvals.enterOpeningBalance(opening));
    EXPECT_TRUE(opening.errorMessage().value_or(QString()).startsWith(
        QStringLiteral("Kofi already has an opening balance of ₵20.00")));
    EXPECT_EQ(accounts.balance(kofi), 20);
    EXPECT_TRUE(log().isEmpty());
}

TEST_F(AccountApprovalsTest, AnAdjustmentTheSheetRefusesCallsNobodyOver)
{
    session.setCurrentUser(ama);
    points.setDirection(AdjustPointsModel::Direction::remove);
    points.setPointsText(QStringLiteral("50"));
    points.setReason(QStringLiteral("correction"));
    EXPECT_FALSE(approvals.adjustPoints(points));
    EXPECT_EQ(points.errorMessage(),
              QStringLiteral("The customer only has 40 points — you can't take away more than that."));
    EXPECT_EQ(kofi->loyaltyPoints(), 40);
}

} // namespace
