#include "access/useraccountsviewmodel.h"

#include "access/autherror.h"
#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "clock/clock.h"

namespace {
// An unknown stored role is treated as a cashier everywhere, so it is shown as one.
bool isAdmin(const User& user)
{
    return user.role() == UserRole::admin;
}
} // namespace

UserAccountsViewModel::UserAccountsViewModel(ModelContext& context, AuthServicing& auth,
                                             SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_auth(auth)
    , m_session(session)
{
    connect(&m_context, &ModelContext::didChange, this, [this](const QSet<QString>& entityNames) {
        if (entityNames.contains(User::schema().name))
            Q_EMIT usersChanged();
    });
    connect(&m_session, &SessionStore::currentUserChanged, this, &UserAccountsViewModel::usersChanged);
}

void UserAccountsViewModel::setNewUserName(const QString& text)
{
    assign(m_newUserName, text, &UserAccountsViewModel::newUserNameChanged);
}

void UserAccountsViewModel::setNewUsername(const QString& text)
{
    assign(m_newUsername, text, &UserAccountsViewModel::newUsernameChanged);
}

void UserAccountsViewModel::setNewPassword(const QString& text)
{
    assign(m_newPassword, text, &UserAccountsViewModel::newPasswordChanged);
}

void UserAccountsViewModel::setNewPin(const QString& text)
{
    assign(m_newPin, text, &UserAccountsViewModel::newPinChanged);
}

void UserAccountsViewModel::setNewRole(UserRole role)
{
    if (replace(m_newRole, role))
        Q_EMIT newRoleChanged();
}

void UserAccountsViewModel::assign(QString& field, const QString& value,
                                   void (UserAccountsViewModel::*changed)())
{
    if (value == field)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

void UserAccountsViewModel::checkUsernameIsFree(const QString& username)
{
    // Sign-in trims and lower-cases what is typed, so two usernames that read the same there would
    // leave one account that can never sign in.
    const Condition sameAtSignIn(QStringLiteral("lower(trim(\"username\")) = ?"),
                                 {username.trimmed().toLower()});
    if (m_context.count<User>(sameAtSignIn) > 0)
        throw AuthError(AuthError::Case::usernameInUse);
}

bool UserAccountsViewModel::createUser()
{
    setErrorMessage(std::nullopt);
    // Deliberately untrimmed: a name of blanks passes, and a username with blanks around it is kept
    // as typed (sign-in, which trims, will never find it).
    if (m_newUserName.isEmpty() || m_newUsername.isEmpty() ||
        characterCount(m_newPassword) < PasswordHasher::minimumPasswordLength) {
        setErrorMessage(
            QStringLiteral("Name, username, and a password of at least 6 characters are required."));
        return false;
    }
    const QString pin = PinRules::trimmed(m_newPin);
    if (!pin.isEmpty() && !writing([&] { m_auth.checkPin(pin, nullptr); }))
        return false;
    if (!writing([&] { checkUsernameIsFree(m_newUsername); }))
        return false;

    const QString salt = PasswordHasher::makeSalt();
    auto user = std::make_shared<User>();
    user->setName(m_newUserName);
    user->setUsername(m_newUsername.toLower());
    user->setPasswordSalt(salt);
    user->setPasswordHash(PasswordHasher::hash(m_newPassword, salt));
    user->setRole(m_newRole);
    user->setPin(pin.isEmpty() ? std::nullopt : std::optional<QString>(pin));
    user->setIsActive(true);
    user->setCreatedAt(Clock::now());
    if (!saveOrUndo(m_context, [&] { m_context.insert(user); }))
        return false;

    setNewUserName(QString());
    setNewUsername(QString());
    setNewPassword(QString());
    setNewPin(QString());
    return true;
}

QList<UserAccountRow> UserAccountsViewModel::rows()
{
    QList<Ref<User>> users;
    try {
        users = m_context.fetch<User>(FetchDescriptor().sortedBy(ascending(User::Col::createdAt)));
    } catch (const Refusal& error) {
        setErrorMessage(error.description());
        return {};
    }
    const Ref<User> signedIn = m_session.currentUser();
    QList<UserAccountRow> result;
    result.reserve(users.size());
    for (const Ref<User>& user : users) {
        result.append(UserAccountRow{user, user->name(), user->username(), roleLabel(*user), pinLabel(*user),
                                     user->isActive(), signedIn && signedIn->id() == user->id()});
    }
    return result;
}

QString UserAccountsViewModel::roleLabel(const User& user)
{
    return UserRoles::label(isAdmin(user) ? UserRole::admin : UserRole::cashier);
}

QString UserAccountsViewModel::pinLabel(const User& user)
{
    const std::optional<QString> pin = user.pin();
    return pin && !pin->isEmpty() ? QStringLiteral("PIN set") : QStringLiteral("No PIN");
}

bool UserAccountsViewModel::setActive(const Ref<User>& user, bool isActive)
{
    return writing([&] { m_auth.setActive(user, isActive, m_session.currentUser()); });
}

QString UserAccountsViewModel::pinDialogTitle(const User& user)
{
    return QStringLiteral("PIN for %1").arg(user.name());
}

QString UserAccountsViewModel::pinDialogNote(const User& user)
{
    if (isAdmin(user))
        return QStringLiteral(
                   "A PIN of 4 to 6 digits signs %1 in with Quick PIN and approves cashiers' actions at "
                   "the till. Leave it blank to remove the PIN.")
            .arg(user.name());
    return QStringLiteral(
               "A PIN of 4 to 6 digits signs %1 in with Quick PIN. Leave it blank to remove the PIN.")
        .arg(user.name());
}

std::optional<QString> UserAccountsViewModel::savePin(const Ref<User>& user, const QString& pin)
{
    return storeFailure([&] { m_auth.setPin(pin, user); });
}

QString UserAccountsViewModel::editTitle(const User& user)
{
    return QStringLiteral("Edit %1").arg(user.name());
}

UserEdit UserAccountsViewModel::editOf(const User& user)
{
    return UserEdit{user.name(), isAdmin(user) ? UserRole::admin : UserRole::cashier, QString(), QString()};
}

std::optional<QString> UserAccountsViewModel::saveEdit(const Ref<User>& user, const UserEdit& edit)
{
    Q_ASSERT(user);
    // The account list and sign-in show the name; one of blanks would leave a row nobody can tell.
    if (edit.name.trimmed().isEmpty())
        return QStringLiteral("Enter a name.");
    if (edit.changesPassword()) {
        // The rules of the first admin's form, which also asks for the password twice.
        if (characterCount(edit.newPassword) < PasswordHasher::minimumPasswordLength)
            return QStringLiteral("Password must be at least 6 characters.");
        if (edit.newPassword != edit.confirmPassword)
            return QStringLiteral("Passwords don't match.");
    }
    return storeFailure([&] {
        performUnitOfWork(m_context, [&] {
            m_auth.updateUser(user, edit.name, edit.role);
            if (edit.changesPassword())
                m_auth.resetPassword(user, edit.newPassword);
        });
    });
}
