#include "access/approvalservice.h"

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

// The filter as SQL over the log: the rows to read from, the conditions and their bindings.
struct LogWhere {
    QString from; // enough to count
    QString alias; // of the table the conditions and the order read
    QString sql;
    QVariantList bindings;

    // The entries themselves, for their rows.
    QString fromEntries() const
    {
        return alias == QLatin1String("e") ? from : from + QStringLiteral(" CROSS JOIN AuditEntry e ON e.id = s.id");
    }
};

// A search reads the narrow copy of the log's words in time order, and only a page's matches are
// joined to their entries; without one, the entries' own indexes serve.
LogWhere whereOf(const ApprovalService::LogFilter& filter, bool boundedAbove = true)
{
    const QString search = filter.search.trimmed();
    LogWhere where;
    where.from = search.isEmpty() ? QStringLiteral("AuditEntry e") : QStringLiteral("AuditSearch s");
    where.alias = search.isEmpty() ? QStringLiteral("e") : QStringLiteral("s");
    where.sql = where.alias + QStringLiteral(".timestamp >= ?");
    where.bindings << double(QDateTime(filter.from, QTime(0, 0)).toSecsSinceEpoch());
    if (boundedAbove) {
        where.sql += QStringLiteral(" AND %1.timestamp < ?").arg(where.alias);
        where.bindings << double(QDateTime(filter.to.addDays(1), QTime(0, 0)).toSecsSinceEpoch());
    }
    if (filter.action) {
        where.sql += QStringLiteral(" AND %1.actionRaw = ?").arg(where.alias);
        where.bindings << AuditActions::raw(*filter.action);
    }
    if (!search.isEmpty()) {
        // LIKE ignores case in the ASCII letters; the wildcards of the text itself are escaped.
        QString pattern = search;
        pattern.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
            .replace(QLatin1Char('%'), QStringLiteral("\\%"))
            .replace(QLatin1Char('_'), QStringLiteral("\\_"));
        where.sql += QStringLiteral(" AND s.text LIKE ? ESCAPE '\\'");
        where.bindings << QLatin1Char('%') + pattern + QLatin1Char('%');
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
    "SELECT e.timestamp, e.id, e.actionRaw, e.cashierName, e.approverName, e.amount, e.reference, e.reason, e.details "
    "FROM ");

// Newest first; the id orders entries of one second.
QString logOrder(const LogWhere& where)
{
    return QStringLiteral(" ORDER BY %1.timestamp DESC, %1.id DESC").arg(where.alias);
}

} // namespace

ApprovalService::ApprovalService(ModelContext& context)
    : m_context(context)
{
}

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
    LogWhere where = whereOf(filter, !after);
    // The key's row is inside the filter, so the key is the upper bound, and a page far down
    // starts at its place in the index instead of walking there.
    if (after) {
        where.sql += QStringLiteral(" AND (%1.timestamp, %1.id) < (?, ?)").arg(where.alias);
        where.bindings << after->first << after->second;
    }
    where.bindings << limit;
    return m_context.rows<LogRow>(logColumns + where.fromEntries() + QStringLiteral(" WHERE ") + where.sql + logOrder(where) +
                                      QStringLiteral(" LIMIT ?"),
                                  where.bindings, logRowOf);
}

qint64 ApprovalService::logCount(const LogFilter& filter)
{
    const LogWhere where = whereOf(filter);
    const QList<qint64> count = m_context.rows<qint64>(QStringLiteral("SELECT COUNT(*) FROM ") + where.from + QStringLiteral(" WHERE ") + where.sql,
                                                       where.bindings, [](const SqliteStatement& statement) {
                                                           return statement.integer(0);
                                                       });
    return count.value(0);
}

QList<QStringList> ApprovalService::rows(const LogFilter& filter)
{
    const LogWhere where = whereOf(filter);
    return m_context.rows<QStringList>(
        logColumns + where.fromEntries() + QStringLiteral(" WHERE ") + where.sql + logOrder(where),
        where.bindings, [](const SqliteStatement& statement) { return logRowOf(statement).cells; });
}
