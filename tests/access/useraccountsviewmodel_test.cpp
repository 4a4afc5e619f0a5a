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

} // namespace
