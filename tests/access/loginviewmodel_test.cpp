#include "access/loginviewmodel.h"

#include "access/authservice.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

TEST(LoginViewModel, WrongEntryStaysToBeCorrectedAndARightOneClearsOnlyTheSecret)
{
    TestStore store;
    AuthService auth(store.context());
    SessionStore session;
    LoginViewModel model(auth, session);
    const Ref<User> ama = addUser(store.context(), {.pin = QStringLiteral("1234")});

    model.setUsername(QStringLiteral(" Ama "));
    model.setPassword(QStringLiteral("wrong1"));
    EXPECT_FALSE(model.loginWithPassword());
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Incorrect username or password."));
    EXPECT_EQ(model.password(), QStringLiteral("wrong1"));
    model.setPassword(QStringLiteral("secret1"));
    EXPECT_TRUE(model.loginWithPassword());
    EXPECT_EQ(session.currentUser(), ama);
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ(model.username() + model.password(), QStringLiteral(" Ama "));
}
