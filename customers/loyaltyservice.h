#pragma once

#include "records/appsettings.h"
#include "records/customer.h"
#include "records/loyaltyentry.h"
#include "records/sale.h"
#include "records/user.h"
#include "store/modelcontext.h"

#include <QStringList>

#include <array>

enum class LoyaltyEntryKind {
    earned,
    redeemed,
    refundReversal,
    refundReturn,
    adjustment,
    openingBalance,
    voidReversal,
    voidReturn
};

// The raw texts are persisted in every store and backup, so they never change.
struct LoyaltyEntryKinds {
    static constexpr std::array<LoyaltyEntryKind, 8> all{
        LoyaltyEntryKind::earned,       LoyaltyEntryKind::redeemed,   LoyaltyEntryKind::refundReversal,
        LoyaltyEntryKind::refundReturn, LoyaltyEntryKind::adjustment, LoyaltyEntryKind::openingBalance,
        LoyaltyEntryKind::voidReversal, LoyaltyEntryKind::voidReturn};

    static QString raw(LoyaltyEntryKind kind);
    // Unknown text reads as earned.
    static LoyaltyEntryKind fromRaw(const QString& raw);
    // The line of the points history: "Earned on INV-…", "Adjustment — goodwill", ...
    static QString description(const LoyaltyEntry& entry);
};

// Customers' points. Every change goes through record(), one LoyaltyEntry a change, and never takes
// a balance below 0. Only adjust() and recordOpeningBalances() are units of work of their own: the
// sale, refund and void operations run inside checkout's, which saves once for all of it.
class LoyaltyService {
public:
    explicit LoyaltyService(ModelContext& context);

    // Applies `points`, cut so the balance stops at 0; absent when nothing changed. Doesn't save.
    Ref<LoyaltyEntry> record(qint64 points, const Ref<Customer>& customer, LoyaltyEntryKind kind,
                             const QString& reference, const QString& note, double value,
                             const Ref<User>& by);
    // Redemption first, then points earned on the total net of tax (already net of the points).
    void applySale(const Ref<Sale>& sale, qint64 redeemed, const AppSettings& settings, const Ref<User>& by);
    // Gives back spent points, then takes back earned ones, in proportion to `share` (0…1) unless
    // the original is now fully returned. Works whether or not loyalty is switched on.
    void applyRefund(const Ref<Sale>& refund, const Ref<Sale>& original, double share, bool fullyReturned,
                     const Ref<User>& by);
    void applyVoid(const Ref<Sale>& sale, const Ref<User>& by);
    // Throws the LoyaltyError that adjust() would refuse with, so that a refusal comes before anybody
    // is asked to approve the adjustment.
    static void checkAdjustment(const Customer& customer, qint64 points, const QString& reason);
    // One unit of work; throws LoyaltyError before writing anything, or StoreError with nothing
    // written.
    Ref<LoyaltyEntry> adjust(const Ref<Customer>& customer, qint64 points, const QString& reason,
                             const Ref<User>& user);

    static qint64 pointsEarned(double amount, const AppSettings& settings);
    static qint64 maxRedeemable(qint64 balance, double discountable, const AppSettings& settings);
    // Throws LoyaltyError; the customer may be absent.
    static void checkRedemption(qint64 points, const Ref<Customer>& customer, double discountable,
                                const AppSettings& settings);

    // Newest first.
    QList<Ref<LoyaltyEntry>> history(const Ref<Customer>& customer);
    // Once per store: explains balances from before the points ledger with an opening row, and
    // clears negative ones. One unit of work, or part of the caller's.
    static void recordOpeningBalances(ModelContext& context);
    // Rows of the "Loyalty Points" report: section, metric, value.
    static QList<QStringList> reportRows(const QList<Ref<LoyaltyEntry>>& entries,
                                         const QList<Ref<Customer>>& customers);

private:
    ModelContext& m_context;
};
