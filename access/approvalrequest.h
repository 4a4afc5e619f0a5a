#pragma once

#include "access/auditaction.h"
#include "records/user.h"
#include "viewmodel/viewmodel.h"

#include <QString>
#include <QUuid>

#include <functional>

// One action waiting for the approval dialog, held by the screen that raised it.
struct ApprovalRequest {
    QUuid id = QUuid::createUuid();
    AuditAction action = AuditAction::discount;
    QString summary;
    bool needsPIN = true;
    bool askReason = false;
    bool reasonRequired = false;
    // Gets the approving admin (null when no PIN was asked) and the trimmed reason; a Refusal it
    // throws is shown in the dialog, which stays open.
    std::function<void(const Ref<User>& approver, const QString& reason)> perform;
    std::function<void()> onCancel = [] {};

    // A request for an admin's PIN over an action of `model`: `perform` gets the approver and the
    // reason and says whether the action went through; when it didn't, the model's message is the
    // dialog's.
    static ApprovalRequest forModel(AuditAction action, const QString& summary, const ViewModel& model,
                                    std::function<bool(const Ref<User>& approver, const QString& reason)> perform);
};
