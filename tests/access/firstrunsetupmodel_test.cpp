#include "access/firstrunsetupmodel.h"

#include "access/authservice.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

namespace {

class FirstRunSetupModelTest : public ::testing::Test {
protected:
    void fill(const QString& business, const QString& name, const QString& username, const QString& password,
              const QString& confirm)
    {
        model.setBusinessName(business);
        model.setAdminName(name);
        model.setAdminUsername(username);
        model.setAdminPassword(password);
        model.setConfirmPassword(confirm);
    }

    TestStore store;
    SessionStore session;
    FirstRunSetupModel model{store.context(),
                             [this] {
                                 auto settings = std::make_shared<AppSettings>();
                                 store.context().insert(settings);
                                 return settings;
                             },
                             session};
};

TEST_F(FirstRunSetupModelTest, RefusesAnIncompleteFormThenCreatesOneAdminAndSignsThemIn)
{
    const char* const names = "Enter a business name, your name, and a username.";
    const char* const tooShort = "Password must be at least 6 characters.";
    const struct {
        const char* fault;
        const char *business, *name, *username, *password, *confirm, *message;
    } cases[] = {
        {"blank business name", " \n", "Ama", "ama", "secret1", "secret1", names},
        {"blank admin name", "Shop", "\t", "ama", "secret1", "secret1", names},
        {"blank username", "Shop", "Ama", " ", "secret1", "secret1", names},
        {"password checked before names", "", "Ama", "ama", "1", "2", names},
        {"short password", "Shop", "Ama", "ama", "12345", "12345", tooShort},
        {"emoji counted as two", "Shop", "Ama", "ama", "😀😀😀", "😀😀😀", tooShort},
        {"confirmation trimmed", "Shop", "Ama", "ama", "secret1", "secret1 ", "Passwords don't match."},
    };
    for (const auto& c : cases) {
        fill(c.business, c.name, c.username, c.password, c.confirm);
        EXPECT_FALSE(model.create()) << c.fault;
        EXPECT_EQ(model.errorMessage(), QString::fromUtf8(c.message)) << c.fault;
    }
    EXPECT_EQ(store.context().count<User>() + store.context().count<AppSettings>(), 0);

    fill(QStringLiteral(" Adwoa's Salon\n"), QStringLiteral(" Adwoa "), QStringLiteral(" ADWOA "),
         QStringLiteral(" pass word "), QStringLiteral(" pass word "));
    ASSERT_TRUE(model.create());
    ASSERT_NE(session.currentUser(), nullptr);
    EXPECT_EQ(session.settings()->businessName(), QStringLiteral("Adwoa's Salon"));

    store.reopen();
    const QList<Ref<User>> users = store.context().fetch<User>();
    ASSERT_EQ(users.size(), 1);
    EXPECT_EQ(users[0]->id(), session.currentUser()->id());
    EXPECT_EQ(users[0]->name(), QStringLiteral("Adwoa"));
    EXPECT_EQ(users[0]->roleRaw(), QStringLiteral("admin"));
    EXPECT_EQ(store.context().fetchFirst<AppSettings>()->businessName(), QStringLiteral("Adwoa's Salon"));
    // The password is kept as typed, blanks included.
    AuthService auth(store.context());
    EXPECT_EQ(auth.login(QStringLiteral("adwoa"), QStringLiteral(" pass word "))->id(), users[0]->id());
}

} // namespace
