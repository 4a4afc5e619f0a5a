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
    if (!isActive)
        keepAnActiveAdminBesides(*user);
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

void AuthService::updateUser(const Ref<User>& user, const QString& name, UserRole role)
{
    Q_ASSERT(user);
    if (role != UserRole::admin)
        keepAnActiveAdminBesides(*user);
    performUnitOfWork(m_context, [&] {
        user->setName(name);
        user->setRole(role);
    });
}

void AuthService::resetPassword(const Ref<User>& user, const QString& password)
{
    Q_ASSERT(user);
    performUnitOfWork(m_context, [&] {
        // A new salt with every password, so a digest never shows that two passwords were alike.
        const QString salt = PasswordHasher::makeSalt();
        user->setPasswordSalt(salt);
        user->setPasswordHash(PasswordHasher::hash(password, salt));
    });
}

void AuthService::keepAnActiveAdminBesides(const User& user)
{
    // Only an active admin can be the last; an unknown stored role reads as a cashier, as elsewhere.
    if (user.role() != UserRole::admin || !user.isActive())
        return;
    const Condition others(QStringLiteral("\"roleRaw\" = ? AND \"isActive\" = 1 AND \"id\" != ?"),
                           {UserRoles::raw(UserRole::admin), user.idText()});
    if (m_context.count<User>(others) == 0)
        throw AuthError(AuthError::Case::lastActiveAdmin);
}
