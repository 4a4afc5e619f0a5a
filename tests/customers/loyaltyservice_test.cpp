#include "customers/loyaltyservice.h"

#include "accountbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
class LoyaltyServiceTest : public ::testing::Test {
protected:
    Ref<Sale> saleFor(const Ref<Customer>& customer, const char* invoice = "INV-1")
    {
        const Ref<Sale> sale = Sale::make(QString::fromUtf8(invoice), nullptr, customer, nullptr);
        context.insert(sale);
        return sale;
    }

    QList<qint64> pointsOf(const QList<Ref<LoyaltyEntry>>& entries)
    {
        QList<qint64> points;
        for (const Ref<LoyaltyEntry>& entry : entries)
            points.prepend(entry->points()); // history is newest first
        return points;
    }

    TestStore store;
    ModelContext& context = store.context();
    LoyaltyService loyalty{context};
    AppSettings settings; // the defaults: 10.00 a point, 100 points = 5.00, minimum 100
};

TEST_F(LoyaltyServiceTest, PointsEarnedFloorsWithASlackForWholeMultiples)
{
    const struct {
        double amount;
        qint64 points;
    } cases[] = {{29.99, 2}, {30.00, 3}, {29.9999999995, 3}, {0, 0}, {-10, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(LoyaltyService::pointsEarned(c.amount, settings), c.points) << c.amount;

    settings.setLoyaltySpendPerPoint(0);
    EXPECT_EQ(LoyaltyService::pointsEarned(100, settings), 0);
    settings.setLoyaltySpendPerPoint(10);
    settings.setLoyaltyEnabled(false);
    EXPECT_EQ(LoyaltyService::pointsEarned(100, settings), 0);
}

// The figures of redeeming and earning are checked through checkout; here, what is booked.
TEST_F(LoyaltyServiceTest, SaleBooksRedeemedThenEarnedWithoutSavingAndAVoidUnwindsBoth)
{
    const Ref<Customer> ama = addCustomer(context, {.points = 500});
    const Ref<Sale> sale = saleFor(ama);
    sale->setPointsDiscount(20);
    sale->setTotal(80);
    loyalty.applySale(sale, 400, settings, nullptr);
    const QList<Ref<LoyaltyEntry>> history = loyalty.history(ama);
    EXPECT_EQ(pointsOf(history), (QList<qint64>{-400, 8}));
    EXPECT_EQ(history[1]->value(), 20);
    EXPECT_EQ(history[1]->balanceAfter(), 100);
    EXPECT_EQ(LoyaltyEntryKinds::description(*history[1]), QStringLiteral("Redeemed on INV-1"));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("LoyaltyEntry")), 0);

    loyalty.applyVoid(sale, nullptr);
    EXPECT_EQ(ama->loyaltyPoints(), 500);
    EXPECT_EQ(sale->pointsReturned(), 400);
    EXPECT_EQ(sale->pointsReversed(), 8);
    EXPECT_EQ(LoyaltyEntryKinds::description(*loyalty.history(ama).first()),
              QStringLiteral("Taken back — voided INV-1"));

    const Ref<Sale> anonymous = saleFor(nullptr, "INV-2");
    anonymous->setTotal(500);
    loyalty.applySale(anonymous, 0, settings, nullptr);
    EXPECT_EQ(anonymous->pointsEarned(), 0);
}

TEST_F(LoyaltyServiceTest, RefundsTakeBackInShareAndNeverBelowZero)
{
    const Ref<Customer> ama = addCustomer(context);
    const Ref<Sale> original = saleFor(ama);
    original->setTotal(50);
    loyalty.applySale(original, 0, settings, nullptr);
    ASSERT_EQ(original->pointsEarned(), 5);

    // Loyalty off later on doesn't stop a refund from reversing what was booked.
    settings.setLoyaltyEnabled(false);
    const Ref<Sale> half = saleFor(nullptr, "INV-2");
    loyalty.applyRefund(half, original, 0.5, false, nullptr);
    EXPECT_EQ(half->pointsEarned(), -3); // 2.5 rounds away from zero
    EXPECT_EQ(ama->loyaltyPoints(), 2);

    // The full return takes the 2 left, though half of 5 would round to 3 again; the customer has
    // spent one of them meanwhile, so only 1 can go and the refund row says so.
    ASSERT_NE(loyalty.record(-1, ama, LoyaltyEntryKind::redeemed, "INV-9", {}, 0, nullptr), nullptr);
    const Ref<Sale> rest = saleFor(nullptr, "INV-3");
    loyalty.applyRefund(rest, original, 0.5, true, nullptr);
    EXPECT_EQ(original->pointsReversed(), 5);
    EXPECT_EQ(rest->pointsEarned(), -1);
    EXPECT_EQ(ama->loyaltyPoints(), 0);
    EXPECT_EQ(pointsOf(loyalty.history(ama)), (QList<qint64>{5, -3, -1, -1}));
    // At 0 a deduction is a no-op, and a no-op writes no row.
    EXPECT_EQ(loyalty.record(-5, ama, LoyaltyEntryKind::adjustment, {}, {}, 0, nullptr), nullptr);
}

TEST_F(LoyaltyServiceTest, AdjustNeedsPointsAndAReasonAndSaves)
{
    const Ref<Customer> ama = addCustomer(context, {.points = 3});
    const struct {
        qint64 points;
        const char* reason;
        const char* error;
    } refused[] = {
        {0, "goodwill", "Enter a number of points other than zero."},
        {5, " \n\t", "Enter a reason for the adjustment."},
        {-4, "correction", "The customer only has 3 points — you can't take away more than that."},
    };
    for (const auto& c : refused) {
        EXPECT_EQ(refusalOf([&] { loyalty.adjust(ama, c.points, c.reason, nullptr); }),
                  QString::fromUtf8(c.error));
    }
    EXPECT_FALSE(context.hasChanges());

    const Ref<LoyaltyEntry> entry = loyalty.adjust(ama, -3, QStringLiteral("  correction\n"), nullptr);
    EXPECT_EQ(LoyaltyEntryKinds::description(*entry), QStringLiteral("Adjustment — correction"));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("LoyaltyEntry")), 1);
    EXPECT_FALSE(context.hasChanges());
}

TEST_F(LoyaltyServiceTest, RedemptionChecksInOrder)
{
    const Ref<Customer> ama = addCustomer(context, {.points = 250});
    const struct {
        qint64 points;
        double discountable;
        const char* error;
    } cases[] = {
        {0, 0, ""},
        {50, 100, "At least 100 points must be redeemed at a time."},
        {300, 100, "Kofi only has 250 points."},
        {201, 10, "That's worth more than the sale. At most 200 points can be used on it."},
        {200, 10, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusalOf(
                      [&] { LoyaltyService::checkRedemption(c.points, ama, c.discountable, settings); }),
                  QString::fromUtf8(c.error))
            << c.points;
    }
    EXPECT_EQ(LoyaltyService::maxRedeemable(250, 10, settings), 200);
    EXPECT_EQ(LoyaltyService::maxRedeemable(99, 10, settings), 0); // below the minimum
    settings.setLoyaltyMinimumRedeem(0);
    EXPECT_EQ(LoyaltyService::maxRedeemable(3, 10, settings), 3);
    EXPECT_EQ(refusalOf([&] { LoyaltyService::checkRedemption(3, ama, 10, settings); }),
              QString());
}

// Stored in every store and backup: a renamed text would misread old entries.
TEST(LoyaltyEntryKinds, RawTextsArePinnedAndUnknownReadsAsEarned)
{
    QStringList raws;
    for (LoyaltyEntryKind kind : LoyaltyEntryKinds::all) {
        raws << LoyaltyEntryKinds::raw(kind);
        EXPECT_EQ(LoyaltyEntryKinds::fromRaw(raws.last()), kind);
    }
    EXPECT_EQ(raws.join(','), "earned,redeemed,refundReversal,refundReturn,adjustment,openingBalance,voidReversal,"
                              "voidReturn");
    EXPECT_EQ(LoyaltyEntryKinds::fromRaw(QStringLiteral("bonus")), LoyaltyEntryKind::earned);
}
} // namespace
