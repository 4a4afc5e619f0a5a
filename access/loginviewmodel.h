#pragma once

#include "access/attemptthrottle.h"
#include "access/authservicing.h"
#include "startup/sessionstore.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// The sign-in screen's state. A wrong entry shows its message and what was typed stays to be
// corrected in place; after five in a row the throttle makes each further try wait.
class LoginViewModel : public ViewModel {
    Q_OBJECT

public:
    LoginViewModel(AuthServicing& auth, SessionStore& session, AttemptThrottle& throttle, QObject* parent = nullptr);

    QString username() const { return m_username; }
    void setUsername(const QString& username);
    QString password() const { return m_password; }
    void setPassword(const QString& password);
    QString pin() const { return m_pin; }
    void setPin(const QString& pin);
    bool isUsingPin() const { return m_isUsingPin; }
    void setIsUsingPin(bool isUsingPin);

    // The business's name once there are settings, else the product's.
    QString title() const;

    // Each signs the user into the session on success; returns whether it did.
    bool loginWithPassword();
    bool loginWithPin();

Q_SIGNALS:
    void usernameChanged();
    void passwordChanged();
    void pinChanged();
    void isUsingPinChanged();

private:
    template <class Login, class ClearSecret> bool signIn(Login login, ClearSecret clearSecret);

    AuthServicing& m_auth;
    SessionStore& m_session;
    AttemptThrottle& m_throttle;
    QString m_username;
    QString m_password;
    QString m_pin;
    bool m_isUsingPin = false;
};
