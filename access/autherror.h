#pragma once

#include "refusal/caseerror.h"

#include <QString>

enum class AuthErrorCase {
    invalidCredentials,
    accountInactive,
    invalidPin,
    cannotDeactivateSelf,
    pinFormat,
    pinInUse,
    usernameInUse,
    lastActiveAdmin
};

inline QString describeAuthError(AuthErrorCase errorCase)
{
    switch (errorCase) {
    case AuthErrorCase::invalidCredentials:
        return QStringLiteral("Incorrect username or password.");
    case AuthErrorCase::accountInactive:
        return QStringLiteral("This account has been disabled. See an admin.");
    case AuthErrorCase::invalidPin:
        return QStringLiteral("Incorrect PIN.");
    case AuthErrorCase::cannotDeactivateSelf:
        return QStringLiteral("You can't deactivate the account you're signed in with — that would lock "
                              "you out. Sign in as another admin to do it.");
    case AuthErrorCase::pinFormat:
        return QStringLiteral("A PIN is 4 to 6 digits.");
    case AuthErrorCase::pinInUse:
        return QStringLiteral("Someone else already has that PIN. Choose another.");
    case AuthErrorCase::usernameInUse:
        return QStringLiteral("Someone else already has that username. Choose another.");
    case AuthErrorCase::lastActiveAdmin:
        return QStringLiteral("There must be at least one active admin.");
    }
    Q_UNREACHABLE();
}

// Why a sign-in or an account change was refused; description() is the text shown as it is.
class AuthError : public CaseError<AuthErrorCase, describeAuthError> {
public:
    using CaseError::CaseError;
};
