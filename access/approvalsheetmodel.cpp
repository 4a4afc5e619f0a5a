#include "access/approvalsheetmodel.h"

#include "access/approvalservice.h"
#include "access/attemptthrottle.h"

ApprovalSheetModel::ApprovalSheetModel(ApprovalRequest request, ApprovalService& approvals,
                                       AttemptThrottle& throttle, QObject* parent)
    : ViewModel(parent)
    , m_request(std::move(request))
    , m_approvals(approvals)
    , m_throttle(throttle)
{
}

QString ApprovalSheetModel::title() const
{
    return AuditActions::dialogTitle(m_request.action);
}

QString ApprovalSheetModel::pinNote()
{
    return QStringLiteral(
        "A cashier needs an admin's approval for this. Ask an admin to enter their PIN — you stay signed in.");
}

QString ApprovalSheetModel::reasonLabel() const
{
    return m_request.reasonRequired ? QStringLiteral("Reason (required)") : QStringLiteral("Reason (optional)");
}

QString ApprovalSheetModel::confirmText() const
{
    return m_request.needsPIN ? QStringLiteral("Approve") : QStringLiteral("Continue");
}

void ApprovalSheetModel::setPin(const QString& pin)
{
    if (replace(m_pin, pin))
        Q_EMIT pinChanged();
}

void ApprovalSheetModel::setReason(const QString& reason)
{
    assign(m_reason, reason);
}

Ref<User> ApprovalSheetModel::approvingAdmin()
{
    if (!m_request.needsPIN)
        return nullptr;
    m_throttle.checkAllowed();
    try {
        Ref<User> admin = m_approvals.approver(m_pin);
        m_throttle.recordSuccess();
        return admin;
    } catch (const ApprovalError& error) {
        if (error.errorCase() == ApprovalErrorCase::wrongPin)
            m_throttle.recordFailure();
        throw;
    }
}

bool ApprovalSheetModel::approve()
{
    const QString reason = m_reason.trimmed();
    const bool approved = writing([&] {
        if (m_request.reasonRequired && reason.isEmpty())
            throw ApprovalError(ApprovalErrorCase::reasonRequired);
        m_request.perform(approvingAdmin(), reason);
    });
    if (!approved)
        setPin(QString());
    return approved;
}

void ApprovalSheetModel::cancel()
{
    m_request.onCancel();
}
