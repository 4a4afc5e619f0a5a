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

TEST_F(UserAccountsViewModelTest, AddUserRefusesBeforeWriting)
{
    addUser(store.context(), {.pin = QStringLiteral("9999"), .isActive = false});
    const char* const required = "Name, username, and a password of at least 6 characters are required.";
    const struct {
        const char *fault, *name, *username, *password, *pin, *message;
    } cases[] = {
        {"empty name", "", "kofi", "secret1", "", required},
        {"empty username", "Kofi", "", "secret1", "", required},
        {"short password", "Kofi", "kofi", "12345", "", required},
        {"PIN format unchecked", "Kofi", "kofi", "secret1", "12a4", "A PIN is 4 to 6 digits."},
        {"disabled user's PIN given out", "Kofi", "kofi", "secret1", " 9999\t",
         "Someone else already has that PIN. Choose another."},
    };
    for (const auto& c : cases) {
        fillForm(c.name, c.username, c.password, c.pin);
        EXPECT_FALSE(model.createUser()) << c.fault;
        EXPECT_EQ(model.errorMessage(), QString::fromUtf8(c.message)) << c.fault;
    }
    EXPECT_EQ(store.context().count<User>(), 1);
}

TEST_F(UserAccountsViewModelTest, AddUserKeepsBlanksInTheUsernameSoSignInNeverFindsIt)
{
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
        EXPECT_NE(failureOf([&] { reopened.login(QString::fromUtf8(typed), QStringLiteral("secret1")); }),
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

    const QList<UserAccountRow> rows = model.rows();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].roleLabel + rows[0].pinLabel, QStringLiteral("AdminPIN set"));
    EXPECT_TRUE(rows[0].isSignedInUser);
    // An empty PIN is no PIN, and an unknown role must not look like an admin.
    EXPECT_EQ(rows[1].roleLabel + rows[1].pinLabel, QStringLiteral("CashierNo PIN"));
    EXPECT_FALSE(rows[1].isSignedInUser);

    EXPECT_FALSE(model.setActive(boss, false));
    EXPECT_TRUE(model.errorMessage().value_or(QString()).startsWith(QStringLiteral("You can't deactivate")));
    EXPECT_TRUE(model.setActive(ama, false));
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(ama->isActive());
}

TEST_F(UserAccountsViewModelTest, PinDialog)
{
    const Ref<User> boss = addUser(store.context(), {.pin = QStringLiteral("1111"), .role = UserRole::admin});
    EXPECT_EQ(
        UserAccountsViewModel::pinDialogNote(*boss),
        QStringLiteral("A PIN of 4 to 6 digits signs Ama in with Quick PIN and approves cashiers' actions at "
                       "the till. Leave it blank to remove the PIN."));
    EXPECT_EQ(model.savePin(boss, QStringLiteral("123")), QStringLiteral("A PIN is 4 to 6 digits."));
    EXPECT_EQ(model.savePin(boss, QStringLiteral(" ")), std::nullopt);
    EXPECT_EQ(boss->pin(), std::nullopt);
}

} // namespace
