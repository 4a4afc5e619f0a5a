#pragma once

#include "access/approvalrequest.h"
#include "viewmodel/viewmodel.h"

class ApprovalService;
class AttemptThrottle;

// The one approval dialog's state, the same for every action: an admin's PIN where one is asked,
// a reason where one is, and the action itself once both pass.
class ApprovalSheetModel : public ViewModel {
    Q_OBJECT

public:
    ApprovalSheetModel(ApprovalRequest request, ApprovalService& approvals, AttemptThrottle& throttle,
                       QObject* parent = nullptr);

    const ApprovalRequest& request() const { return m_request; }
    QString title() const;
    static QString pinNote();
    QString reasonLabel() const;
    QString confirmText() const;

    QString pin() const { return m_pin; }
    void setPin(const QString& pin);
    QString reason() const { return m_reason; }
    void setReason(const QString& reason);

    // True when the action went through and the dialog may close; otherwise the message is in
    // errorMessage and the PIN field is emptied for the admin to type again.
    bool approve();
    void cancel();

Q_SIGNALS:
    void pinChanged();

private:
    Ref<User> approvingAdmin();

    ApprovalRequest m_request;
    ApprovalService& m_approvals;
    AttemptThrottle& m_throttle;
    QString m_pin;
    QString m_reason;
};
