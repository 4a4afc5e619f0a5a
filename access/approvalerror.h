#pragma once

#include "refusal/caseerror.h"

enum class ApprovalErrorCase { noAdminPin, wrongPin, reasonRequired };

inline QString describeApprovalError(ApprovalErrorCase errorCase)
{
    switch (errorCase) {
    case ApprovalErrorCase::noAdminPin:
        return QStringLiteral("No admin has a PIN yet, so nobody can approve this. An admin can set one in "
                              "Settings → User Accounts.");
    case ApprovalErrorCase::wrongPin:
        return QStringLiteral("That isn't an admin's PIN. Ask an admin to enter theirs.");
    case ApprovalErrorCase::reasonRequired:
        return QStringLiteral("Enter a reason.");
    }
    Q_UNREACHABLE();
}

class ApprovalError : public CaseError<ApprovalErrorCase, describeApprovalError> {
public:
    using CaseError::CaseError;
};
