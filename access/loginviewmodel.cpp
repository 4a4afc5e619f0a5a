#include "access/loginviewmodel.h"

#include "access/autherror.h"

LoginViewModel::LoginViewModel(AuthServicing& auth, SessionStore& session, AttemptThrottle& throttle,
                               QObject* parent)
    : ViewModel(parent)
    , m_auth(auth)
    , m_session(session)
    , m_throttle(throttle)
{
}

void LoginViewModel::setUsername(const QString& username)
{
    if (replace(m_username, username))
        Q_EMIT usernameChanged();
}

void LoginViewModel::setPassword(const QString& password)
{
    if (replace(m_password, password))
        Q_EMIT passwordChanged();
}

void LoginViewModel::setPin(const QString& pin)
{
    if (replace(m_pin, pin))
        Q_EMIT pinChanged();
}

void LoginViewModel::setIsUsingPin(bool isUsingPin)
{
    if (replace(m_isUsingPin, isUsingPin))
        Q_EMIT isUsingPinChanged();
}

QString LoginViewModel::title() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return settings ? settings->businessName() : QStringLiteral("Brindle");
}

template <class Login, class ClearSecret> bool LoginViewModel::signIn(Login login, ClearSecret clearSecret)
{
    setErrorMessage(std::nullopt);
    try {
        m_throttle.checkAllowed();
        Ref<User> user;
        try {
            user = login();
        } catch (const AuthError& error) {
            if (error.errorCase() == AuthErrorCase::invalidCredentials || error.errorCase() == AuthErrorCase::invalidPin)
                m_throttle.recordFailure();
            throw;
        }
        m_throttle.recordSuccess();
        // Cleared before the session changes: the sign-in screen may be torn down in reply to it.
        clearSecret();
        m_session.setCurrentUser(user);
        return true;
    } catch (const Refusal& refusal) {
        setErrorMessage(refusal.description());
    }
    return false;
}

bool LoginViewModel::loginWithPassword()
{
    return signIn([this] { return m_auth.login(m_username, m_password); },
                  [this] { setPassword(QString()); });
}

bool LoginViewModel::loginWithPin()
{
    return signIn([this] { return m_auth.loginWithPin(m_pin); }, [this] { setPin(QString()); });
}
