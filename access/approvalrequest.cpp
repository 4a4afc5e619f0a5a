#include "access/approvalrequest.h"

ApprovalRequest ApprovalRequest::forModel(AuditAction action, const QString& summary, const ViewModel& model,
                                          std::function<bool(const Ref<User>&, const QString&)> perform)
{
    ApprovalRequest request;
    request.action = action;
    request.summary = summary;
    request.needsPIN = true;
    request.perform = [&model, perform = std::move(perform)](const Ref<User>& approver, const QString& reason) {
        if (!perform(approver, reason))
            throw Refusal(model.errorMessage().value_or(QString()));
    };
    return request;
}
