#pragma once

#include <QString>

#include <stdexcept>

// Why a sign-in or an account change was refused; description() is the text shown as it is.
class AuthError : public std::runtime_error {
public:
    enum class Case {
        invalidCredentials,
        accountInactive,
        invalidPin,
        cannotDeactivateSelf,
        pinFormat,
        pinInUse
    };

    explicit AuthError(Case errorCase)
        : std::runtime_error(describe(errorCase).toStdString())
        , m_case(errorCase)
    {
    }

    Case errorCase() const { return m_case; }
    QString description() const { return describe(m_case); }

    static QString describe(Case errorCase)
    {
        switch (errorCase) {
        case Case::invalidCredentials:
            return QStringLiteral("Incorrect username or password.");
        case Case::accountInactive:
            return QStringLiteral("This account has been disabled. See an admin.");
        case Case::invalidPin:
            return QStringLiteral("Incorrect PIN.");
        case Case::cannotDeactivateSelf:
            return QStringLiteral("You can't deactivate the account you're signed in with — that would lock "
                                  "you out. Sign in as another admin to do it.");
        case Case::pinFormat:
            return QStringLiteral("A PIN is 4 to 6 digits.");
        case Case::pinInUse:
            return QStringLiteral("Someone else already has that PIN. Choose another.");
        }
        Q_UNREACHABLE();
    }

private:
    Case m_case;
};
