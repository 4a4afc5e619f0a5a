#include "access/useraccountsviewmodel.h"

#include "access/authservice.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

namespace {

class UserAccountsViewModelTest : public ::testing::Test {
protected:
    void fillForm(const QString& name, const QString& username, const QString& password, const QString& pin)
    {
        model.setNewUserName(name);
        model.setNewUsername(username);
        model.setNewPassword(password);
        model.setNewPin(pin);
    }

    TestStore store;
    AuthService auth{store.context()};
    SessionStore session;
    UserAccountsViewModel model{store.context(), auth, session};
};

TEST_F(UserAccountsViewModelTest, AddUserRefusesBeforeWritingAndKeepsBlanksInTheUsername)
{
    const char* const required = "Name, username, and a password of at least 6 characters are required.";
    const struct {
        const char *fault, *name, *username, *password, *pin, *message;
    } cases[] = {
        {"empty name", "", "kofi", "secret1", "", required},
        {"empty username", "Kofi", "", "secret1", "", required},
        {"short password", "Kofi", "kofi", "12345", "", required},
        {"PIN format unchecked", "Kofi", "kofi", "secret1", "12a4", "A PIN is 4 to 6 digits."},
    };
    for (const auto& c : cases) {
        fillForm(c.name, c.username, c.password, c.pin);
        EXPECT_FALSE(model.createUser()) << c.fault;
        EXPECT_EQ(model.errorMessage(), QString::fromUtf8(c.message)) << c.fault;
    }
    EXPECT_EQ(store.context().count<User>(), 0);

    model.setNewRole(UserRole::admin);
    fillForm(QStringLiteral("  "), QStringLiteral(" Kofi "), QStringLiteral("secret1"),
             QStringLiteral(" 4321 "));
    ASSERT_TRUE(model.createUser());
    EXPECT_EQ(model.newUsername() + model.newPassword() + model.newPin(), QString());
    EXPECT_EQ(model.newRole(), UserRole::admin);

    store.reopen();
    AuthService reopened(store.context());
    const Ref<User> kofi = reopened.loginWithPin(QStringLiteral("4321"));
    EXPECT_EQ(kofi->username(), QStringLiteral(" kofi "));
    EXPECT_EQ(kofi->roleRaw(), QStringLiteral("admin"));
    for (const char* typed : {" kofi ", "kofi"})
        EXPECT_NE(refusalOf([&] { reopened.login(QString::fromUtf8(typed), QStringLiteral("secret1")); }),
                  QString());
}

TEST_F(UserAccountsViewModelTest, RowsAndTheActiveSwitch)
{
    const Ref<User> boss =
        addUser(store.context(),
                {.username = QStringLiteral("boss"), .pin = QStringLiteral("1111"), .role = UserRole::admin});
    const Ref<User> ama = addUser(store.context(), {.pin = QString()});
    ama->setRoleRaw(QStringLiteral("manager"));
    store.context().save();
    session.setCurrentUser(boss);

    // An empty PIN is no PIN, and an unknown role must not look like an admin.
    const QList<UserAccountRow> rows = model.rows();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].roleLabel + rows[1].pinLabel, QStringLiteral("CashierNo PIN"));

    EXPECT_FALSE(model.setActive(boss, false));
    EXPECT_EQ(model.errorMessage(),
              QStringLiteral("You can't deactivate the account you're signed in with — that would lock you out. "
                             "Sign in as another admin to do it."));
    EXPECT_TRUE(boss->isActive());
    EXPECT_TRUE(model.setActive(ama, false));
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(ama->isActive());
}

const char* const lastAdmin = "There must be at least one active admin.";

// Each case: who else is there, and what is done to the one active admin, Ama.
TEST_F(UserAccountsViewModelTest, TheLastActiveAdminCanBeNeitherDemotedNorSwitchedOff)
{
    const struct {
        const char* fault;
        bool otherAdminActive;
        bool otherIsAdmin;
        bool demote; // else switch off
        const char* message;
    } cases[] = {
        {"demoting the only admin", false, false, true, lastAdmin},
        {"an inactive admin counted as active when demoting", false, true, true, lastAdmin},
        {"switching off the only active admin", false, true, false, lastAdmin},
        {"another active admin refused to demote", true, true, true, ""},
        {"another active admin refused to switch off", true, true, false, ""},
    };
    for (const auto& c : cases) {
        TestStore fresh;
        AuthService freshAuth{fresh.context()};
        UserAccountsViewModel accounts{fresh.context(), freshAuth, session};
        const Ref<User> ama = addUser(fresh.context(), {.role = UserRole::admin});
        const Ref<User> other = addUser(fresh.context(), {.username = QStringLiteral("kojo"),
                                                          .isActive = c.otherAdminActive,
                                                          .role = c.otherIsAdmin ? UserRole::admin : UserRole::cashier});
        // Signed in as the other account, as an admin disabled while signed in would still be.
        session.setCurrentUser(other);
        std::optional<QString> refusal;
        if (c.demote) {
            UserEdit edit = UserAccountsViewModel::editOf(*ama);
            edit.role = UserRole::cashier;
            refusal = accounts.saveEdit(ama, edit);
        } else if (!accounts.setActive(ama, false)) {
            refusal = accounts.errorMessage();
        }
        EXPECT_EQ(refusal.value_or(QString()), QString::fromUtf8(c.message)) << c.fault;
        fresh.reopen();
        const Ref<User> stored = fresh.context().find<User>(ama->id());
        const bool refused = *c.message != 0;
        EXPECT_EQ(stored->role() == UserRole::admin && stored->isActive(), refused) << c.fault;
        session.setCurrentUser(nullptr);
    }
}

TEST_F(UserAccountsViewModelTest, EditRefusesBeforeWritingAndAResetPasswordReplacesTheOld)
{
    addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    const Ref<User> ama = addUser(store.context());
    const QString oldSalt = ama->passwordSalt();
    const struct {
        const char *fault, *name, *password, *confirm, *message;
    } cases[] = {
        {"blank name", "  ", "", "", "Enter a name."},
        {"short password", "Ama K.", "12345", "12345", "Password must be at least 6 characters."},
        {"only the confirmation typed", "Ama K.", "", "secret9", "Password must be at least 6 characters."},
        {"passwords differ", "Ama K.", "secret9", "secret8", "Passwords don't match."},
    };
    for (const auto& c : cases) {
        const UserEdit edit{QString::fromUtf8(c.name), UserRole::admin, QString::fromUtf8(c.password),
                            QString::fromUtf8(c.confirm)};
        EXPECT_EQ(model.saveEdit(ama, edit), QString::fromUtf8(c.message)) << c.fault;
    }
    EXPECT_EQ(ama->name(), QStringLiteral("Ama"));
    EXPECT_EQ(ama->role(), UserRole::cashier);

    EXPECT_EQ(model.saveEdit(ama, {QStringLiteral("Ama K."), UserRole::admin, QStringLiteral("new pass"),
                                   QStringLiteral("new pass")}),
              std::nullopt);
    store.reopen();
    AuthService reopened(store.context());
    EXPECT_EQ(refusalOf([&] { reopened.login(QStringLiteral("ama"), QStringLiteral("secret1")); }),
              QStringLiteral("Incorrect username or password."));
    const Ref<User> signedIn = reopened.login(QStringLiteral("ama"), QStringLiteral("new pass"));
    EXPECT_EQ(signedIn->name(), QStringLiteral("Ama K."));
    EXPECT_EQ(signedIn->role(), UserRole::admin);
    EXPECT_NE(signedIn->passwordSalt(), oldSalt);

    // A blank password keeps the one there is.
    UserAccountsViewModel accounts{store.context(), reopened, session};
    UserEdit rename = UserAccountsViewModel::editOf(*signedIn);
    rename.name = QStringLiteral("Ama Kusi");
    EXPECT_EQ(accounts.saveEdit(signedIn, rename), std::nullopt);
    EXPECT_NO_THROW(reopened.login(QStringLiteral("ama"), QStringLiteral("new pass")));
    EXPECT_NO_THROW(reopened.login(QStringLiteral("boss"), QStringLiteral("secret1"))) << "only Ama's changed";
}

} // namespace
