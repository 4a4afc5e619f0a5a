#pragma once

#include "access/approvalrequest.h"
#include "customers/adjustpointsmodel.h"
#include "customers/customerdetailmodel.h"
#include "customers/openingbalancemodel.h"

#include <optional>

class AccountsService;
class ApprovalService;
class SessionStore;

// The changes to a customer's account that only an admin makes: the credit settings, a hand
// adjustment of points, the opening balance and deleting the customer. An admin's go through at once; a cashier's wait
// for an admin's PIN in the approval dialog. Either way the change and its row in the audit log are
// one unit of work, so the log never misses a change nor tells of one that didn't happen.
class AccountApprovals {
public:
    AccountApprovals(ApprovalService& approvals, AccountsService& accounts, SessionStore& session);

    // Each makes the change at once and gives nothing when the signed-in user may make it alone,
    // a refusal then being in the model's errorMessage; otherwise it changes nothing yet and gives
    // the request for the approval dialog, whose perform makes it.
    std::optional<ApprovalRequest> saveCustomer(CustomerDetailModel& detail);
    std::optional<ApprovalRequest> deleteCustomer(CustomerDetailModel& detail);
    // Checks the entry first, so that an admin isn't called over for a refusal: nothing, with the
    // message in the sheet, when it fails.
    std::optional<ApprovalRequest> adjustPoints(AdjustPointsModel& sheet);
    std::optional<ApprovalRequest> enterOpeningBalance(OpeningBalanceModel& sheet);

private:
    using Perform = std::function<bool(const Ref<User>& approver, const QString& reason)>;
    // The summary is only worked out when somebody is asked.
    std::optional<ApprovalRequest> ask(AuditAction action, const std::function<QString()>& summary, bool askReason,
                                       const ViewModel& model, const Perform& perform);
    // The row of the change, inside its unit of work.
    void record(AuditAction action, const Ref<User>& approver, std::optional<double> amount,
                const QString& customerName, const QString& reason, const QString& details);
    QString money(double amount) const;

    ApprovalService& m_approvals;
    AccountsService& m_accounts;
    SessionStore& m_session;
};
