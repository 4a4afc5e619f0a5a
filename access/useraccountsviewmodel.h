#pragma once

#include "access/authservicing.h"
#include "records/enums.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One line of the "User Accounts" list, in finished text.
struct UserAccountRow {
    Ref<User> user;
    QString name;
    QString username;
    QString roleLabel;
    QString pinLabel;
    bool isActive = true;
    // Shows "You", and its switch is disabled: nobody may switch themselves off.
    bool isSignedInUser = false;
};

// What the "Edit User" sheet holds for one account until Save. A blank password keeps the old one.
struct UserEdit {
    QString name;
    UserRole role = UserRole::cashier;
    QString newPassword;
    QString confirmPassword;

    bool changesPassword() const { return !newPassword.isEmpty() || !confirmPassword.isEmpty(); }
};

// The "User Accounts" section of Settings: the accounts list, its switches, the PIN and edit
// sheets, and the "Add User" form. Accounts are never deleted.
class UserAccountsViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString youLabel() { return QStringLiteral("You"); }
    static QString signedInSwitchHelp()
    {
        return QStringLiteral("You can't deactivate the account you're signed in with.");
    }

    UserAccountsViewModel(ModelContext& context, AuthServicing& auth, SessionStore& session,
                          QObject* parent = nullptr);

    QString newUserName() const { return m_newUserName; }
    void setNewUserName(const QString& text);
    QString newUsername() const { return m_newUsername; }
    void setNewUsername(const QString& text);
    QString newPassword() const { return m_newPassword; }
    void setNewPassword(const QString& text);
    UserRole newRole() const { return m_newRole; }
    void setNewRole(UserRole role);
    QString newPin() const { return m_newPin; }
    void setNewPin(const QString& text);

    // "Create User". On success the form is emptied except for the role, which stays for the next.
    bool createUser();

    // Oldest account first. A store that can't be read gives no rows and says so in errorMessage.
    QList<UserAccountRow> rows();
    static QString roleLabel(const User& user);
    // An empty stored PIN counts as none.
    static QString pinLabel(const User& user);

    // The "Active" switch, acting as the signed-in user; a refusal goes to errorMessage.
    bool setActive(const Ref<User>& user, bool isActive);

    // The "Set PIN…" dialog.
    static QString pinDialogTitle(const User& user);
    static QString pinDialogNote(const User& user);
    // Absent when saved; otherwise the message for the dialog, which stays open.
    std::optional<QString> savePin(const Ref<User>& user, const QString& pin);

    // The "Edit…" sheet: name, role and, for someone who forgot it, a new password typed twice.
    static QString editTitle(const User& user);
    static QString editNote()
    {
        return QStringLiteral("Leave the password blank to keep the current one.");
    }
    static UserEdit editOf(const User& user);
    // Saves the edit in one unit of work. Absent when saved; otherwise the message for the sheet,
    // which stays open, and nothing was written.
    std::optional<QString> saveEdit(const Ref<User>& user, const UserEdit& edit);

Q_SIGNALS:
    void newUserNameChanged();
    void newUsernameChanged();
    void newPasswordChanged();
    void newRoleChanged();
    void newPinChanged();
    // The rows are out of date: an account changed, or someone else signed in.
    void usersChanged();

private:
    // Throws AuthError::usernameInUse.
    void checkUsernameIsFree(const QString& username);
    void assign(QString& field, const QString& value, void (UserAccountsViewModel::*changed)());

    ModelContext& m_context;
    AuthServicing& m_auth;
    SessionStore& m_session;
    QString m_newUserName;
    QString m_newUsername;
    QString m_newPassword;
    UserRole m_newRole = UserRole::cashier;
    QString m_newPin;
};
