#include "access/approvalservice.h"

#include "access/auditsearchindex.h"
#include "access/pinrules.h"
#include "clock/clock.h"
#include "money/currency.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "records/records.h"
#include "selling/cart.h"
#include "store/modelcontext.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

#include <QLocale>
#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcAudit, "tallyrun.audit")

namespace {

// The tolerance of every comparison of a discount with its limit.
constexpr double limitTolerance = 0.004;

bool isAdmin(const User* user)
{
    return user && user->roleRaw() == QLatin1String("admin");
}

QString nameOrDash(const User* user)
{
    return user ? user->name() : QStringLiteral("—");
}

QString fixedMoney(double amount)
{
    return Currency::format(amount, Currency::fixedSign);
}

QString discountPercent(const Cart& cart)
{
    const double gross = cart.grossTotal();
    return Currency::percentText(gross > 0 ? cart.cashierDiscountTotal() / gross : 0);
}

// The filter as SQL conditions over AuditEntry, with their bindings; a search is answered by the
// index of the log's words.
struct LogWhere {
    QString sql;
    QVariantList bindings;
};

double startOf(const QDate& day)
{
    return double(QDateTime(day, QTime(0, 0)).toSecsSinceEpoch());
}

LogWhere whereOf(const ApprovalService::LogFilter& filter, bool boundedAbove = true)
{
    LogWhere where;
    where.sql = QStringLiteral("timestamp >= ?");
    where.bindings << startOf(filter.from);
    if (boundedAbove) {
        where.sql += QStringLiteral(" AND timestamp < ?");
        where.bindings << startOf(filter.to.addDays(1));
    }
    if (filter.action) {
        where.sql += QStringLiteral(" AND actionRaw = ?");
        where.bindings << AuditActions::raw(*filter.action);
    }
    return where;
}

// A points adjustment's amount is points, not money.
QString amountText(const QString& actionRaw, double amount)
{
    if (AuditActions::fromRaw(actionRaw) == AuditAction::pointsAdjustment)
        return QStringLiteral("%1%2 points").arg(amount > 0 ? QStringLiteral("+") : QString()).arg(qint64(amount));
    return fixedMoney(amount);
}

ApprovalService::LogRow logRowOf(const SqliteStatement& statement)
{
    ApprovalService::LogRow row;
    row.timestamp = statement.real(0);
    row.id = statement.text(1);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(qint64(row.timestamp * 1000));
    const QString approver = statement.text(4);
    row.cells << time.toString(QStringLiteral("yyyy-MM-dd HH:mm")) << AuditActions::title(statement.text(2))
              << statement.text(3) << (approver.isEmpty() ? QStringLiteral("—") : approver)
              << (statement.isNull(5) ? QString() : amountText(statement.text(2), statement.real(5)))
              << statement.text(6)
              << statement.text(7) << statement.text(8);
    return row;
}

const QString logColumns = QStringLiteral(
    "SELECT timestamp, id, actionRaw, cashierName, approverName, amount, reference, reason, details FROM AuditEntry");
// Newest first; the id orders the entries of one second.
const QString logOrder = QStringLiteral(" ORDER BY timestamp DESC, id DESC");

} // namespace

ApprovalService::ApprovalService(ModelContext& context)
    : m_context(context)
{
}

ApprovalService::~ApprovalService() = default;

QList<Ref<User>> ApprovalService::adminsWithPin()
{
    QList<Ref<User>> admins;
    for (const Ref<User>& user : m_context.fetch<User>()) {
        if (user->roleRaw() == QLatin1String("admin") && user->isActive() && !user->pin().value_or(QString()).isEmpty())
            admins.append(user);
    }
    return admins;
}

Ref<User> ApprovalService::approver(const QString& pin)
{
    const QList<Ref<User>> admins = adminsWithPin();
    if (admins.isEmpty())
        throw ApprovalError(ApprovalErrorCase::noAdminPin);
    const QString typed = PinRules::trimmed(pin);
    if (typed.isEmpty())
        throw ApprovalError(ApprovalErrorCase::wrongPin);
    for (const Ref<User>& admin : admins) {
        if (admin->pin() == typed)
            return admin;
    }
    throw ApprovalError(ApprovalErrorCase::wrongPin);
}

bool ApprovalService::isSwitchedOn(AuditAction action, const AppSettings* settings)
{
    return AuditActions::isSwitchedOn(action, settings);
}

bool ApprovalService::needsApproval(AuditAction action, const User* user, const AppSettings* settings)
{
    return !isAdmin(user) && isSwitchedOn(action, settings);
}

double ApprovalService::discountLimit(const Cart& cart, const AppSettings& settings)
{
    double limit = std::max(settings.discountLimit(), 0.0);
    if (settings.discountLimitIsPercent())
        limit = limit * cart.grossTotal() / 100;
    return Rounding::toCents(limit);
}

bool ApprovalService::discountNeedsApproval(const Cart& cart, const User* user, const AppSettings* settings)
{
    if (!settings || isAdmin(user) || !settings->approveDiscounts())
        return false;
    const double discount = cart.cashierDiscountTotal();
    if (discount <= discountLimit(cart, *settings) + limitTolerance)
        return false;
    return discount > cart.discountApprovedUpTo() + limitTolerance;
}

QString ApprovalService::discountSummary(const Cart& cart, const AppSettings& settings)
{
    const QString& symbol = settings.currencySymbol();
    return QStringLiteral("%1 off a %2 sale (%3). The limit without approval is %4 (%5).")
        .arg(Currency::format(cart.cashierDiscountTotal(), symbol), Currency::format(cart.grossTotal(), symbol),
             discountPercent(cart), settings.discountLimitText(),
             Currency::format(discountLimit(cart, settings), symbol));
}

void ApprovalService::record(AuditAction action, const User* by, const QString& approverName,
                             std::optional<double> amount, const QString& reference, const QString& reason,
                             const QString& details)
{
    auto entry = std::make_shared<AuditEntry>();
    entry->setTimestamp(Clock::now());
    entry->setActionRaw(AuditActions::raw(action));
    entry->setCashierName(nameOrDash(by));
    entry->setApproverName(approverName);
    if (amount)
        entry->setAmount(Rounding::toCents(*amount));
    entry->setReference(reference);
    entry->setReason(reason.trimmed());
    entry->setDetails(details);
    m_context.insert(entry);
}

void ApprovalService::recordSale(const Sale& sale, const Cart& cart, const User* by, const AppSettings& settings)
{
    try {
        performUnitOfWork(m_context, [&] {
            const double discount = cart.cashierDiscountTotal();
            const double limit = discountLimit(cart, settings);
            if (discount > limit + limitTolerance) {
                record(AuditAction::discount, by, cart.discountApprovedBy(), discount, sale.invoiceNumber(),
                       cart.discountReason(),
                       QStringLiteral("%1 off %2 (%3); limit %4")
                           .arg(fixedMoney(discount), fixedMoney(cart.grossTotal()), discountPercent(cart),
                                settings.discountLimitText()));
            }
            for (const CartLine& line : cart.lines()) {
                if (!line.priceOverride)
                    continue;
                const QString quantity = Quantity::format(line.quantity, line.product->sellingUnit());
                record(AuditAction::priceChange, by, line.priceApprovedBy, *line.priceOverride * line.quantity,
                       sale.invoiceNumber(), line.priceReason,
                       QStringLiteral("%1: %2 → %3 × %4")
                           .arg(line.product->name(), fixedMoney(line.product->sellingPrice()),
                                fixedMoney(*line.priceOverride), quantity));
            }
            if (cart.pointsToRedeem() > 0) {
                const Ref<Customer> customer = cart.customer();
                record(AuditAction::redeemPoints, by, cart.redemptionApprovedBy(),
                       cart.valuePerPoint() * double(cart.pointsToRedeem()), sale.invoiceNumber(), QString(),
                       QStringLiteral("%1 points for %2")
                           .arg(cart.pointsToRedeem())
                           .arg(customer ? customer->name() : QStringLiteral("the customer")));
            }
        });
    } catch (const StoreError& error) {
        qCWarning(lcAudit) << "The audit rows of sale" << sale.invoiceNumber() << "weren't saved:" << error.description();
    }
}

QStringList ApprovalService::logHeaders()
{
    return {QStringLiteral("Time"),      QStringLiteral("Action"), QStringLiteral("Cashier"),
            QStringLiteral("Approved By"), QStringLiteral("Amount"), QStringLiteral("Reference"),
            QStringLiteral("Reason"),    QStringLiteral("Details")};
}

QList<ApprovalService::LogRow> ApprovalService::logPage(const LogFilter& filter,
                                                        const std::optional<std::pair<double, QString>>& after,
                                                        int limit)
{
    if (!filter.search.trimmed().isEmpty()) {
        QStringList ids;
        const std::vector<int> found = searchMatches(filter);
        for (auto entry = found.rbegin(); entry != found.rend() && ids.size() < limit; ++entry) {
            const std::pair key(m_searchIndex->timestamp(*entry), m_searchIndex->id(*entry));
            if (!after || key < *after)
                ids << key.second;
        }
        return entriesWithIds(ids);
    }
    LogWhere where = whereOf(filter, !after);
    // The key's row is inside the filter, so the key is the upper bound, and a page far down
    // starts at its place in the index instead of walking there.
    if (after) {
        where.sql += QStringLiteral(" AND (timestamp, id) < (?, ?)");
        where.bindings << after->first << after->second;
    }
    where.bindings << limit;
    return m_context.rows<LogRow>(logColumns + QStringLiteral(" WHERE ") + where.sql + logOrder + QStringLiteral(" LIMIT ?"),
                                  where.bindings, logRowOf);
}

qint64 ApprovalService::logCount(const LogFilter& filter)
{
    if (!filter.search.trimmed().isEmpty())
        return qint64(searchMatches(filter).size());
    const LogWhere where = whereOf(filter);
    return m_context.scalar(QStringLiteral("SELECT COUNT(*) FROM AuditEntry WHERE ") + where.sql, where.bindings)
        .toLongLong();
}

QList<QStringList> ApprovalService::rows(const LogFilter& filter)
{
    QList<LogRow> rows;
    if (!filter.search.trimmed().isEmpty()) {
        // A few hundred at a time: SQLite takes only so many values in one statement.
        const std::vector<int> found = searchMatches(filter);
        QStringList ids;
        for (auto entry = found.rbegin(); entry != found.rend(); ++entry) {
            ids << m_searchIndex->id(*entry);
            if (ids.size() == 500 || entry + 1 == found.rend()) {
                rows += entriesWithIds(ids);
                ids.clear();
            }
        }
    } else {
        const LogWhere where = whereOf(filter);
        rows = m_context.rows<LogRow>(logColumns + QStringLiteral(" WHERE ") + where.sql + logOrder, where.bindings,
                                      logRowOf);
    }
    QList<QStringList> cells;
    cells.reserve(rows.size());
    for (LogRow& row : rows)
        cells.append(std::move(row.cells));
    return cells;
}

std::vector<int> ApprovalService::searchMatches(const LogFilter& filter)
{
    if (!m_searchIndex)
        m_searchIndex = std::make_unique<AuditSearchIndex>(m_context);
    return m_searchIndex->matches(
        {startOf(filter.from), startOf(filter.to.addDays(1)), filter.action ? AuditActions::raw(*filter.action) : QString()},
        filter.search.trimmed());
}

QList<ApprovalService::LogRow> ApprovalService::entriesWithIds(const QStringList& ids)
{
    if (ids.isEmpty())
        return {};
    QVariantList bindings;
    for (const QString& id : ids)
        bindings << id;
    const QString marks = QStringLiteral("?, ").repeated(ids.size()).chopped(2);
    return m_context.rows<LogRow>(logColumns + QStringLiteral(" WHERE id IN (%1)").arg(marks) + logOrder, bindings,
                                  logRowOf);
}
