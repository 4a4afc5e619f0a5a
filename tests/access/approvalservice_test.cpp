#include "access/approvalservice.h"

#include "access/approvalsheetmodel.h"
#include "access/attemptthrottle.h"
#include "clock/clock.h"
#include "records/records.h"
#include "selling/cart.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

namespace {

struct ApprovalTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    ApprovalService approvals{context};
    QDateTime now{QDate(2026, 3, 9), QTime(10, 30)};
    Clock::Override clock{[this] { return now; }};
    Ref<User> boss = addUser(context, {.username = QStringLiteral("boss"), .pin = QStringLiteral("2468"),
                                       .role = UserRole::admin, .name = QStringLiteral("Boss")});
    Ref<User> ama = addUser(context, {.pin = QStringLiteral("1111")});
    Ref<AppSettings> settings = store.saved(std::make_shared<AppSettings>());
    Ref<Product> rice = store.saved([] {
        auto made = std::make_shared<Product>();
        made->setName(QStringLiteral("Rice"));
        made->setSellingPrice(99.99);
        return made;
    }());

    Cart cartWithDiscount(double discount)
    {
        Cart cart;
        cart.addOrIncrement(rice, 1);
        cart.setSaleDiscount(discount);
        return cart;
    }
    QString refusalOf(const QString& pin)
    {
        try {
            approvals.approver(pin);
        } catch (const ApprovalError& error) {
            return error.description();
        }
        return {};
    }
};

TEST_F(ApprovalTest, TheDiscountLimitAndWhatAnApprovalCovers)
{
    // 10 % of 99.99 is 10.00: exactly that passes, a cent more asks.
    EXPECT_DOUBLE_EQ(ApprovalService::discountLimit(cartWithDiscount(0), *settings), 10.0);
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cartWithDiscount(10), ama.get(), settings.get()));
    Cart cart = cartWithDiscount(10.01);
    EXPECT_TRUE(ApprovalService::discountNeedsApproval(cart, ama.get(), settings.get()));
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cart, boss.get(), settings.get()));
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cart, ama.get(), nullptr));

    cart.setSaleDiscount(20);
    cart.setDiscountApprovedUpTo(20);
    cart.setSaleDiscount(15);
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cart, ama.get(), settings.get()));
    cart.setSaleDiscount(20);
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cart, ama.get(), settings.get()));
    cart.setSaleDiscount(20.01);
    EXPECT_TRUE(ApprovalService::discountNeedsApproval(cart, ama.get(), settings.get()));

    settings->setDiscountLimit(-5);
    EXPECT_TRUE(ApprovalService::discountNeedsApproval(cartWithDiscount(0.01), ama.get(), settings.get()));
    settings->setApproveDiscounts(false);
    EXPECT_FALSE(ApprovalService::discountNeedsApproval(cartWithDiscount(50), ama.get(), settings.get()));
    context.rollback();
}

TEST_F(ApprovalTest, WhoNeedsApprovalAndOnlyAnActiveAdminsPinApproves)
{
    EXPECT_TRUE(ApprovalService::needsApproval(AuditAction::voidSale, ama.get(), settings.get()));
    EXPECT_TRUE(ApprovalService::needsApproval(AuditAction::voidSale, nullptr, settings.get()));
    EXPECT_FALSE(ApprovalService::needsApproval(AuditAction::voidSale, boss.get(), settings.get()));
    EXPECT_FALSE(ApprovalService::needsApproval(AuditAction::refund, ama.get(), settings.get()));
    EXPECT_FALSE(ApprovalService::needsApproval(AuditAction::voidSale, ama.get(), nullptr));
    // A customer's credit and points are an admin's, whatever the switches say.
    EXPECT_TRUE(ApprovalService::needsApproval(AuditAction::customerCredit, ama.get(), settings.get()));
    ama->setRoleRaw(QStringLiteral("manager"));
    EXPECT_TRUE(ApprovalService::needsApproval(AuditAction::voidSale, ama.get(), settings.get()));
    context.rollback();

    EXPECT_EQ(approvals.approver(QStringLiteral(" 2468\t")), boss);
    const QString wrong = QStringLiteral("That isn't an admin's PIN. Ask an admin to enter theirs.");
    EXPECT_EQ(refusalOf(QStringLiteral("1111")), wrong); // a cashier's own PIN
    EXPECT_EQ(refusalOf(QStringLiteral("   ")), wrong);
    boss->setIsActive(false);
    context.save();
    // With no admin able to approve, that is said whatever was typed.
    EXPECT_EQ(refusalOf(QString()), QStringLiteral("No admin has a PIN yet, so nobody can approve this. An admin "
                                                   "can set one in Settings → User Accounts."));
}

TEST_F(ApprovalTest, ASaleWritesItsRowsEvenWhenAnAdminRangItUp)
{
    const Ref<Sale> sale =
        store.saved(Sale::make(QStringLiteral("INV-20260309-0001"), boss, nullptr, nullptr));
    Cart cart = cartWithDiscount(12.5);
    cart.setPrice(cart.lines()[0].id, 90, QStringLiteral("Boss"), QStringLiteral("damaged bag"));
    approvals.recordSale(*sale, cart, boss.get(), *settings);

    // Both in the same second: the order among them is the key's.
    QStringList rows;
    QStringList details;
    for (const QStringList& row : approvals.rows({now.date(), now.date(), std::nullopt, QString()})) {
        rows << row.mid(1, 5).join(u'|');
        details << row.value(7);
    }
    rows.sort();
    EXPECT_EQ(rows, (QStringList{"Discount over limit|Boss|—|₵12.50|INV-20260309-0001",
                                 "Price change|Boss|Boss|₵90.00|INV-20260309-0001"}));
    EXPECT_TRUE(details.contains(QStringLiteral("Rice: ₵99.99 → ₵90.00 × 1")));
}

TEST_F(ApprovalTest, TheLogFiltersByDayActionAndTextAndPagesByKey)
{
    for (int day = 0; day < 5; ++day) {
        for (int index = 0; index < 3; ++index) {
            now = QDateTime(QDate(2026, 3, 2 + day), QTime(23, 59, 30 + index));
            approvals.record(index == 0 ? AuditAction::voidSale : AuditAction::refund, ama.get(),
                             QStringLiteral("Boss"), 10.005 + index, QStringLiteral("INV-%1-%2").arg(day).arg(index),
                             QStringLiteral("  rang up twice \n"), QString());
        }
    }
    context.save();
    const QDate first(2026, 3, 2);
    // The To day is included whole.
    EXPECT_EQ(approvals.logCount({first, first.addDays(1), std::nullopt, QString()}), 6);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), AuditAction::voidSale, QString()}), 5);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("  ")}), 15);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("INV-3")}), 3);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("RANG")}), 15);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("%")}), 0);

    const QList<QStringList> all = approvals.rows({first, first.addDays(4), std::nullopt, QString()});
    EXPECT_EQ(all[0][0], QStringLiteral("2026-03-06 23:59"));
    EXPECT_EQ(all[0][4], QStringLiteral("₵12.01")); // rounded on creation, halves away from zero
    EXPECT_EQ(all[0][6], QStringLiteral("rang up twice"));
    // A search is answered from the words in memory, the plain log by SQL: both page by key to the
    // same rows.
    for (const QString& search : {QString(), QStringLiteral("twice")}) {
        const ApprovalService::LogFilter filter{first, first.addDays(4), std::nullopt, search};
        QList<QStringList> paged;
        std::optional<std::pair<double, QString>> after;
        for (;;) {
            const QList<ApprovalService::LogRow> page = approvals.logPage(filter, after, 4);
            if (page.isEmpty())
                break;
            for (const ApprovalService::LogRow& row : page)
                paged << row.cells;
            after = std::pair(page.last().timestamp, page.last().id);
        }
        EXPECT_EQ(paged, all) << search.toStdString();
        EXPECT_EQ(approvals.rows(filter), all) << search.toStdString();
    }
    // Words of two fields are not one text; an entry rolled back is not found.
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("Boss INV")}), 0);
    EXPECT_THROW(performUnitOfWork(context,
                                   [&] {
                                       approvals.record(AuditAction::noSale, ama.get(), QString(), std::nullopt,
                                                        QString(), QStringLiteral("ghost"), QString());
                                       throw StoreError(QStringLiteral("failed"));
                                   }),
                 StoreError);
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("ghost")}), 0);
    // The words read for the searches above follow new entries, also one from a clock put back.
    for (const QDateTime& time : {now, QDateTime(first, QTime(8, 0))}) {
        now = time;
        approvals.record(AuditAction::noSale, ama.get(), QString(), std::nullopt, QString(), QStringLiteral("Ghost"),
                         QString());
        context.save();
    }
    EXPECT_EQ(approvals.logCount({first, first.addDays(4), std::nullopt, QStringLiteral("gHOST")}), 2);
    EXPECT_EQ(approvals.logCount({first, first, std::nullopt, QStringLiteral("ghost")}), 1);
}

TEST_F(ApprovalTest, TheSheetAsksAgainAfterAWrongPinAndThrottlesGuessing)
{
    AttemptThrottle throttle;
    QList<QString> done;
    ApprovalRequest request;
    request.action = AuditAction::noSale;
    request.askReason = true;
    request.reasonRequired = true;
    request.perform = [&done](const Ref<User>& approver, const QString& reason) {
        done << approver->name() + QLatin1Char('/') + reason;
    };
    ApprovalSheetModel sheet(request, approvals, throttle);

    sheet.setPin(QStringLiteral("2468"));
    EXPECT_FALSE(sheet.approve());
    EXPECT_EQ(sheet.errorMessage(), QStringLiteral("Enter a reason."));
    EXPECT_EQ(sheet.pin(), QString());

    sheet.setReason(QStringLiteral(" change for a 50 "));
    for (int wrong = 0; wrong < AttemptThrottle::freeTries; ++wrong) {
        sheet.setPin(QStringLiteral("1111"));
        EXPECT_FALSE(sheet.approve());
    }
    sheet.setPin(QStringLiteral("2468"));
    EXPECT_FALSE(sheet.approve()) << "guessing is throttled";
    now = now.addSecs(30);
    sheet.setPin(QStringLiteral("2468"));
    EXPECT_TRUE(sheet.approve());
    EXPECT_EQ(done, QList<QString>{QStringLiteral("Boss/change for a 50")});
}

} // namespace
