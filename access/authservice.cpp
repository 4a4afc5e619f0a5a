#include "access/authservice.h"

#include "access/autherror.h"
#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "store/unitofwork.h"

AuthService::AuthService(ModelContext& context)
    : m_context(context)
{
}

Ref<User> AuthService::login(const QString& username, const QString& password)
{
    // Two accounts may share a username; whichever the store gives first is the one tried.
    const Ref<User> user =
        m_context.fetchFirst<User>(FetchDescriptor(User::Col::username == username.trimmed().toLower()));
    if (!user || PasswordHasher::hash(password, user->passwordSalt()) != user->passwordHash())
        throw AuthError(AuthError::Case::invalidCredentials);
    // Checked only now, so that only someone who knows the password learns the account is disabled.
    if (!user->isActive())
        throw AuthError(AuthError::Case::accountInactive);
    return user;
}

Ref<User> AuthService::loginWithPin(const QString& pin)
{
    // A stored empty PIN means no PIN, so an empty entry must not match it.
    if (pin.isEmpty())
        throw AuthError(AuthError::Case::invalidPin);
    const Ref<User> user = m_context.fetchFirst<User>(FetchDescriptor(User::Col::pin == pin));
    if (!user)
        throw AuthError(AuthError::Case::invalidPin);
    if (!user->isActive())
        throw AuthError(AuthError::Case::accountInactive);
    return user;
}

void AuthService::setPin(const std::optional<QString>& pin, const Ref<User>& user)
{
    Q_ASSERT(user);
    const QString trimmed = PinRules::trimmed(pin.value_or(QString()));
    if (!trimmed.isEmpty())
        checkPin(trimmed, user);
    performUnitOfWork(
        m_context, [&] { user->setPin(trimmed.isEmpty() ? std::nullopt : std::optional<QString>(trimmed)); });
}

void AuthService::setActive(const Ref<User>& user, bool isActive, const Ref<User>& by)
{
    Q_ASSERT(user);
    if (!isActive && by && by->id() == user->id())
        throw AuthError(AuthError::Case::cannotDeactivateSelf);
    performUnitOfWork(m_context, [&] { user->setIsActive(isActive); });
}

void AuthService::checkPin(const QString& pin, const Ref<User>& forUser)
{
    if (!PinRules::isValid(pin))
        throw AuthError(AuthError::Case::pinFormat);
    // Disabled accounts count too, so their PIN stays taken; the account itself may keep its own.
    Condition holders = User::Col::pin == pin;
    if (forUser)
        holders = holders && User::Col::id != forUser->idText();
    if (m_context.count<User>(holders) > 0)
        throw AuthError(AuthError::Case::pinInUse);
}
