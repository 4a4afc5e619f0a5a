#include "access/accountapprovals.h"

#include "access/approvalservice.h"
#include "customers/accountsservice.h"
#include "money/currency.h"
#include "money/tolerances.h"
#include "startup/sessionstore.h"

#include <cstdlib>

AccountApprovals::AccountApprovals(ApprovalService& approvals, AccountsService& accounts, SessionStore& session)
    : m_approvals(approvals)
    , m_accounts(accounts)
    , m_session(session)
{
}

QString AccountApprovals::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

std::optional<ApprovalRequest> AccountApprovals::ask(AuditAction action, const std::function<QString()>& summary,
                                                     bool askReason, const ViewModel& model, const Perform& perform)
{
    if (!ApprovalService::needsApproval(action, m_session.currentUser().get(), m_session.settings().get())) {
        perform(nullptr, QString());
        return std::nullopt;
    }
    ApprovalRequest request = ApprovalRequest::forModel(action, summary(), model, perform);
    request.askReason = askReason;
    return request;
}

void AccountApprovals::record(AuditAction action, const Ref<User>& approver, std::optional<double> amount,
                              const QString& customerName, const QString& reason, const QString& details)
{
    m_approvals.record(action, m_session.currentUser().get(), approver ? approver->name() : QString(), amount,
                       customerName, reason, details);
}

std::optional<ApprovalRequest> AccountApprovals::saveCustomer(CustomerDetailModel& detail)
{
    const std::optional<CustomerDetailModel::CreditChange> change = detail.creditChange();
    if (!change) {
        detail.save();
        return std::nullopt;
    }
    const QString name = detail.name();
    const QString details = change->details();
    return ask(AuditAction::customerCredit, [&] { return QStringLiteral("%1 for %2.").arg(details, name); }, true,
               detail,
               [this, &detail, name, details, limit = change->limitAfter](const Ref<User>& approver,
                                                                         const QString& reason) {
                   return detail.save(
                       [&] { record(AuditAction::customerCredit, approver, limit, name, reason, details); });
               });
}

std::optional<ApprovalRequest> AccountApprovals::deleteCustomer(CustomerDetailModel& detail)
{
    const Ref<Customer> customer = detail.customer();
    const auto summary = [&] {
        return QStringLiteral("Delete %1, who owes %2 and has %3 points.")
            .arg(customer->name(), money(detail.balanceOwed()))
            .arg(customer->loyaltyPoints());
    };
    return ask(AuditAction::customerDeleted, summary, true, detail,
               [this, &detail, customer](const Ref<User>& approver, const QString& reason) {
                   return detail.deleteCustomer([&] {
                       // Read again inside the delete: the row keeps what was written off, and a
                       // store that can't tell refuses the delete rather than log a guess.
                       const double owed = m_accounts.balance(customer);
                       record(AuditAction::customerDeleted, approver,
                              owed > Tolerance::credit ? std::optional(owed) : std::nullopt, customer->name(),
                              reason,
                              QStringLiteral("Owed %1; %2 points")
                                  .arg(Currency::format(owed, Currency::fixedSign))
                                  .arg(customer->loyaltyPoints()));
                   });
               });
}

std::optional<ApprovalRequest> AccountApprovals::adjustPoints(AdjustPointsModel& sheet)
{
    if (!sheet.check())
        return std::nullopt;
    const Ref<Customer> customer = sheet.customer();
    const qint64 points = sheet.points();
    const qint64 before = customer->loyaltyPoints();
    const QString details = QStringLiteral("%1 → %2 points").arg(before).arg(before + points);
    const QString summary = QStringLiteral("%1 %2 points %3 %4 (%5). Reason: %6")
                                .arg(points > 0 ? QStringLiteral("Add") : QStringLiteral("Remove"))
                                .arg(std::abs(points))
                                .arg(points > 0 ? QStringLiteral("to") : QStringLiteral("from"), customer->name(),
                                     details, sheet.reason().trimmed());
    return ask(AuditAction::pointsAdjustment, [&] { return summary; }, false, sheet,
               [this, &sheet, customer, points, details](const Ref<User>& approver, const QString&) {
                   return sheet.save([&] {
                       record(AuditAction::pointsAdjustment, approver, double(points), customer->name(),
                              sheet.reason(), details);
                   });
               });
}

std::optional<ApprovalRequest> AccountApprovals::enterOpeningBalance(OpeningBalanceModel& sheet)
{
    if (!sheet.check())
        return std::nullopt;
    const Ref<Customer> customer = sheet.customer();
    const QString summary = sheet.summary();
    return ask(AuditAction::openingBalance, [&] { return summary; }, true, sheet,
               [this, &sheet, customer](const Ref<User>& approver, const QString& reason) {
                   return sheet.save([&] {
                       record(AuditAction::openingBalance, approver, sheet.amount(), customer->name(), reason,
                              sheet.details());
                   });
               });
}
