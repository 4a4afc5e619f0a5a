#pragma once

#include "access/approvalsheetmodel.h"
#include "ui/controls/sheet.h"

class AppEnvironment;
class QLineEdit;
class QPlainTextEdit;

// The one approval dialog: the action's title and summary, an admin's PIN where one is asked and
// a reason where one is. A refusal keeps it open with the PIN field emptied.
class ApprovalSheet : public Sheet {
    Q_OBJECT

public:
    ApprovalSheet(ApprovalRequest request, AppEnvironment& environment, QWidget* parent);

    // Opens a sheet for the request over `parent`; it deletes itself once closed.
    static ApprovalSheet* raise(ApprovalRequest request, AppEnvironment& environment, QWidget* parent);
    // The same in place of the sheet that asked, one sheet at a time (else its buttons show under
    // the shorter approval sheet): `waiting` hides behind it and comes back when the admin cancels.
    static ApprovalSheet* raiseInPlaceOf(ApprovalRequest request, AppEnvironment& environment,
                                         QWidget& waiting);
    // Asks an admin's PIN for an action of `model`: `perform` gets the approver and says whether
    // the action went through; when it didn't, the sheet shows the model's message and stays open.
    static ApprovalSheet* askPIN(AuditAction action, const QString& summary, const ViewModel& model,
                                 std::function<bool(const Ref<User>& approver)> perform,
                                 AppEnvironment& environment, QWidget* parent);

    QLineEdit* pinField() const { return m_pin; }
    QLineEdit* reasonField() const { return m_reason; }

protected:
    void primaryAction() override;
    void reject() override;

private:
    ApprovalSheetModel m_model;
    QLineEdit* m_pin = nullptr;
    QLineEdit* m_reason = nullptr;
};
