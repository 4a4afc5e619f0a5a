#include "customers/loyaltyservice.h"

#include "clock/clock.h"
#include "customers/loyaltyerror.h"
#include "money/currency.h"
#include "money/rounding.h"
#include "store/unitofwork.h"

#include <algorithm>
#include <cmath>

namespace {
// Lets a spend that is a whole multiple of the rate earn (or fit) its full points despite binary
// fractions: 30.00 at 10.00 a point is 3, not 2.
constexpr double wholeMultipleSlack = 0.000000001;

qint64 floorPoints(double value)
{
    return qint64(std::floor(value + wholeMultipleSlack));
}

// Half away from zero, like money.
qint64 roundPoints(double value)
{
    return qint64(Rounding::toPlaces(value, 0));
}
} // namespace

QString LoyaltyEntryKinds::raw(LoyaltyEntryKind kind)
{
    switch (kind) {
    case LoyaltyEntryKind::earned:
        return QStringLiteral("earned");
    case LoyaltyEntryKind::redeemed:
        return QStringLiteral("redeemed");
    case LoyaltyEntryKind::refundReversal:
        return QStringLiteral("refundReversal");
    case LoyaltyEntryKind::refundReturn:
        return QStringLiteral("refundReturn");
    case LoyaltyEntryKind::adjustment:
        return QStringLiteral("adjustment");
    case LoyaltyEntryKind::openingBalance:
        return QStringLiteral("openingBalance");
    case LoyaltyEntryKind::voidReversal:
        return QStringLiteral("voidReversal");
    case LoyaltyEntryKind::voidReturn:
        return QStringLiteral("voidReturn");
    }
    Q_UNREACHABLE();
}

LoyaltyEntryKind LoyaltyEntryKinds::fromRaw(const QString& raw)
{
    for (LoyaltyEntryKind kind : all) {
        if (LoyaltyEntryKinds::raw(kind) == raw)
            return kind;
    }
    return LoyaltyEntryKind::earned;
}

QString LoyaltyEntryKinds::description(const LoyaltyEntry& entry)
{
    const QString reference = entry.reference();
    switch (fromRaw(entry.kindRaw())) {
    case LoyaltyEntryKind::earned:
        return QStringLiteral("Earned on ") + reference;
    case LoyaltyEntryKind::redeemed:
        return QStringLiteral("Redeemed on ") + reference;
    case LoyaltyEntryKind::refundReversal:
        return QStringLiteral("Taken back — refund ") + reference;
    case LoyaltyEntryKind::refundReturn:
        return QStringLiteral("Given back — refund ") + reference;
    case LoyaltyEntryKind::adjustment:
        return entry.note().isEmpty() ? QStringLiteral("Adjustment")
                                      : QStringLiteral("Adjustment — ") + entry.note();
    case LoyaltyEntryKind::openingBalance:
        return QStringLiteral("Opening balance");
    case LoyaltyEntryKind::voidReversal:
        return QStringLiteral("Taken back — voided ") + reference;
    case LoyaltyEntryKind::voidReturn:
        return QStringLiteral("Given back — voided ") + reference;
    }
    Q_UNREACHABLE();
}

LoyaltyService::LoyaltyService(ModelContext& context)
    : m_context(context)
{
}

Ref<LoyaltyEntry> LoyaltyService::record(qint64 points, const Ref<Customer>& customer, LoyaltyEntryKind kind,
                                         const QString& reference, const QString& note, double value,
                                         const Ref<User>& by)
{
    Q_ASSERT(customer);
    const qint64 change = std::max(points, -customer->loyaltyPoints());
    if (change == 0)
        return nullptr;
    customer->setLoyaltyPoints(customer->loyaltyPoints() + change);

    auto entry = std::make_shared<LoyaltyEntry>();
    entry->setCustomer(customer);
    entry->setPoints(change);
    entry->setBalanceAfter(customer->loyaltyPoints());
    entry->setKindRaw(LoyaltyEntryKinds::raw(kind));
    entry->setReference(reference);
    entry->setNote(note);
    entry->setValue(value);
    entry->setUser(by);
    entry->setTimestamp(Clock::now());
    m_context.insert(entry);
    return entry;
}

qint64 LoyaltyService::pointsEarned(double amount, const AppSettings& settings)
{
    if (!settings.loyaltyEnabled() || settings.loyaltySpendPerPoint() <= 0 || amount <= 0)
        return 0;
    return floorPoints(amount / settings.loyaltySpendPerPoint());
}

void LoyaltyService::applySale(const Ref<Sale>& sale, qint64 redeemed, const AppSettings& settings,
                               const Ref<User>& by)
{
    Q_ASSERT(sale);
    const Ref<Customer> customer = sale->customer();
    if (!customer || !settings.loyaltyEnabled())
        return;
    if (redeemed > 0) {
        sale->setPointsRedeemed(redeemed);
        record(-redeemed, customer, LoyaltyEntryKind::redeemed, sale->invoiceNumber(), {},
               sale->pointsDiscount(), by);
    }
    const qint64 earned = pointsEarned(Rounding::toCents(sale->total() - sale->taxTotal()), settings);
    if (earned > 0) {
        sale->setPointsEarned(earned);
        record(earned, customer, LoyaltyEntryKind::earned, sale->invoiceNumber(), {}, 0, by);
    }
}

void LoyaltyService::applyRefund(const Ref<Sale>& refund, const Ref<Sale>& original, double share,
                                 bool fullyReturned, const Ref<User>& by)
{
    Q_ASSERT(refund && original);
    const Ref<Customer> customer = original->customer();
    if (!customer)
        return;
    qint64 takeBack = std::max<qint64>(original->pointsEarned() - original->pointsReversed(), 0);
    qint64 giveBack = std::max<qint64>(original->pointsRedeemed() - original->pointsReturned(), 0);
    share = std::clamp(share, 0.0, 1.0);
    if (!fullyReturned) {
        giveBack = std::min(giveBack, roundPoints(share * double(original->pointsRedeemed())));
        takeBack = std::min(takeBack, roundPoints(share * double(original->pointsEarned())));
    }

    if (giveBack > 0) {
        const double value = original->pointsRedeemed() < 1
                                 ? 0.0
                                 : Rounding::toCents(original->pointsDiscount() * double(giveBack) /
                                                     double(original->pointsRedeemed()));
        record(giveBack, customer, LoyaltyEntryKind::refundReturn, refund->invoiceNumber(), {}, value, by);
        // What was asked, not what record() applied: the counter tracks the original's points.
        original->setPointsReturned(original->pointsReturned() + giveBack);
        refund->setPointsRedeemed(-giveBack);
    }
    if (takeBack > 0) {
        const Ref<LoyaltyEntry> entry =
            record(-takeBack, customer, LoyaltyEntryKind::refundReversal, refund->invoiceNumber(), {}, 0, by);
        original->setPointsReversed(original->pointsReversed() + takeBack);
        // A customer who already spent the points loses only what they have: the row shows that.
        refund->setPointsEarned(entry ? entry->points() : 0);
    }
}

void LoyaltyService::applyVoid(const Ref<Sale>& sale, const Ref<User>& by)
{
    Q_ASSERT(sale);
    const Ref<Customer> customer = sale->customer();
    if (!customer)
        return;
    const qint64 redeemedLeft = sale->pointsRedeemed() - sale->pointsReturned();
    const qint64 earnedLeft = std::max<qint64>(sale->pointsEarned() - sale->pointsReversed(), 0);
    if (redeemedLeft > 0) {
        // A void comes before any refund, so the whole points discount is still the sale's.
        record(redeemedLeft, customer, LoyaltyEntryKind::voidReturn, sale->invoiceNumber(), {},
               sale->pointsDiscount(), by);
        sale->setPointsReturned(sale->pointsReturned() + redeemedLeft);
    }
    if (earnedLeft != 0) {
        record(-earnedLeft, customer, LoyaltyEntryKind::voidReversal, sale->invoiceNumber(), {}, 0, by);
        sale->setPointsReversed(sale->pointsReversed() + earnedLeft);
    }
}

void LoyaltyService::checkAdjustment(const Customer& customer, qint64 points, const QString& reason)
{
    if (points == 0)
        throw LoyaltyError::invalidPoints();
    if (reason.trimmed().isEmpty())
        throw LoyaltyError::needsReason();
    if (customer.loyaltyPoints() + points < 0)
        throw LoyaltyError::wouldGoNegative(customer.loyaltyPoints());
}

Ref<LoyaltyEntry> LoyaltyService::adjust(const Ref<Customer>& customer, qint64 points, const QString& reason,
                                         const Ref<User>& user)
{
    Q_ASSERT(customer);
    checkAdjustment(*customer, points, reason);
    return performUnitOfWork(m_context, [&] {
        return record(points, customer, LoyaltyEntryKind::adjustment, {}, reason.trimmed(), 0, user);
    });
}

qint64 LoyaltyService::maxRedeemable(qint64 balance, double discountable, const AppSettings& settings)
{
    const double valuePerPoint = settings.loyaltyValuePerPoint();
    if (!settings.loyaltyEnabled() || valuePerPoint <= 0)
        return 0;
    const qint64 most = std::min(balance, floorPoints(discountable / valuePerPoint));
    const qint64 minimum = settings.loyaltyMinimumRedeem();
    if (minimum >= 1 ? most < minimum : most <= 0)
        return 0;
    return most;
}

void LoyaltyService::checkRedemption(qint64 points, const Ref<Customer>& customer, double discountable,
                                     const AppSettings& settings)
{
    if (points <= 0)
        return;
    if (!settings.loyaltyEnabled())
        throw LoyaltyError::loyaltyOff();
    if (!customer)
        throw LoyaltyError::needsCustomer();
    if (points < settings.loyaltyMinimumRedeem())
        throw LoyaltyError::belowMinimum(settings.loyaltyMinimumRedeem());
    if (customer->loyaltyPoints() < points)
        throw LoyaltyError::notEnoughPoints(customer->name(), customer->loyaltyPoints());
    const qint64 fits =
        floorPoints(discountable / std::max(settings.loyaltyValuePerPoint(), wholeMultipleSlack));
    if (points > fits)
        throw LoyaltyError::moreThanTheSale(fits);
}

QList<Ref<LoyaltyEntry>> LoyaltyService::history(const Ref<Customer>& customer)
{
    Q_ASSERT(customer);
    // Entries of one instant come newest insert first, as they were applied.
    return m_context.fetch<LoyaltyEntry>(FetchDescriptor(LoyaltyEntry::Col::customer == customer)
                                             .sortedBy(descending(LoyaltyEntry::Col::timestamp))
                                             .sortedBy(descending(Column{"rowid"})));
}

void LoyaltyService::recordOpeningBalances(ModelContext& context)
{
    UnitOfWork unit(context);
    // Only customers without any entry matter; asked through LoyaltyEntry(customer, timestamp)
    // rather than by loading every entry of the store.
    const QList<Ref<Customer>> unexplained = context.fetch<Customer>(FetchDescriptor(Condition(
        QStringLiteral(
            "NOT EXISTS (SELECT 1 FROM \"LoyaltyEntry\" e WHERE e.\"customer\" = \"Customer\".\"id\")"),
        {})));
    for (const Ref<Customer>& customer : unexplained) {
        if (customer->loyaltyPoints() < 0)
            customer->setLoyaltyPoints(0);
        if (customer->loyaltyPoints() > 0) {
            // Bypasses record(): the row explains a balance the customer already has.
            auto entry = std::make_shared<LoyaltyEntry>();
            entry->setCustomer(customer);
            entry->setPoints(customer->loyaltyPoints());
            entry->setBalanceAfter(customer->loyaltyPoints());
            entry->setKindRaw(LoyaltyEntryKinds::raw(LoyaltyEntryKind::openingBalance));
            entry->setTimestamp(customer->createdAt());
            context.insert(entry);
        }
    }
    unit.commit();
}

QList<QStringList> LoyaltyService::reportRows(const QList<Ref<LoyaltyEntry>>& entries,
                                              const QList<Ref<Customer>>& customers)
{
    qint64 issued = 0, redeemed = 0, takenBack = 0, givenBack = 0, adjusted = 0;
    double redeemedValue = 0;
    for (const Ref<LoyaltyEntry>& entry : entries) {
        switch (LoyaltyEntryKinds::fromRaw(entry->kindRaw())) {
        case LoyaltyEntryKind::earned:
            issued += entry->points();
            break;
        case LoyaltyEntryKind::redeemed:
            redeemed -= entry->points();
            redeemedValue += entry->value();
            break;
        case LoyaltyEntryKind::refundReversal:
        case LoyaltyEntryKind::voidReversal:
            takenBack -= entry->points();
            break;
        case LoyaltyEntryKind::refundReturn:
        case LoyaltyEntryKind::voidReturn:
            givenBack += entry->points();
            break;
        case LoyaltyEntryKind::adjustment:
            adjusted += entry->points();
            break;
        case LoyaltyEntryKind::openingBalance:
            break;
        }
    }
    QList<Ref<Customer>> holders;
    qint64 outstanding = 0;
    for (const Ref<Customer>& customer : customers) {
        if (customer->loyaltyPoints() > 0) {
            holders.append(customer);
            outstanding += customer->loyaltyPoints();
        }
    }
    std::stable_sort(holders.begin(), holders.end(), [](const Ref<Customer>& a, const Ref<Customer>& b) {
        return a->loyaltyPoints() > b->loyaltyPoints();
    });

    const QString activity = QStringLiteral("Activity");
    const QString balances = QStringLiteral("Balances");
    QList<QStringList> rows{
        {activity, QStringLiteral("Points Issued"), QString::number(issued)},
        {activity, QStringLiteral("Points Redeemed"),
         QStringLiteral("%1 (%2)").arg(
             QString::number(redeemed),
             Currency::format(Rounding::toCents(redeemedValue), Currency::fixedSign))},
        {activity, QStringLiteral("Points Taken Back"), QString::number(takenBack)},
        {activity, QStringLiteral("Points Given Back"), QString::number(givenBack)},
        {activity, QStringLiteral("Adjustments"), QString::number(adjusted)},
        {balances, QStringLiteral("Customers with Points"), QString::number(holders.size())},
        {balances, QStringLiteral("Points Outstanding"), QString::number(outstanding)},
    };
    constexpr qsizetype topCount = 5;
    for (qsizetype i = 0; i < std::min(topCount, holders.size()); ++i)
        rows.append({QStringLiteral("Top Customers"), holders[i]->name(),
                     QStringLiteral("%1 points").arg(holders[i]->loyaltyPoints())});
    return rows;
}
