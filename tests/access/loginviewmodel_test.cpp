#include "access/loginviewmodel.h"

#include "access/authservice.h"
#include "clock/clock.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <gtest/gtest.h>

TEST(LoginViewModel, WrongEntryStaysToBeCorrectedAndARightOneClearsOnlyTheSecret)
{
    TestStore store;
    AuthService auth(store.context());
    SessionStore session;
    AttemptThrottle throttle;
    LoginViewModel model(auth, session, throttle);
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

TEST(LoginViewModel, FiveWrongEntriesInARowMakeTheNextTryWait)
{
    TestStore store;
    AuthService auth(store.context());
    SessionStore session;
    AttemptThrottle throttle;
    LoginViewModel model(auth, session, throttle);
    addUser(store.context(), {.pin = QStringLiteral("1234")});
    QDateTime now(QDate(2026, 3, 9), QTime(9, 0));
    Clock::Override clock([&now] { return now; });

    model.setIsUsingPin(true);
    for (int wrong = 0; wrong < AttemptThrottle::freeTries; ++wrong) {
        model.setPin(QStringLiteral("9999"));
        EXPECT_FALSE(model.loginWithPin());
        EXPECT_EQ(model.errorMessage(), QStringLiteral("Incorrect PIN."));
    }
    // Even the right PIN waits now, and the wait is said in plain words.
    model.setPin(QStringLiteral("1234"));
    EXPECT_FALSE(model.loginWithPin());
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Too many wrong tries. Wait 30 seconds before trying again."));
    EXPECT_EQ(session.currentUser(), nullptr);

    now = now.addSecs(30);
    model.setPin(QStringLiteral("9999"));
    EXPECT_FALSE(model.loginWithPin());
    // The sixth wrong entry doubles the wait.
    now = now.addSecs(59);
    model.setPin(QStringLiteral("1234"));
    EXPECT_FALSE(model.loginWithPin());
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Too many wrong tries. Wait 1 second before trying again."));
    now = now.addSecs(1);
    EXPECT_TRUE(model.loginWithPin());

    // A right entry starts the count again.
    model.setPin(QStringLiteral("9999"));
    EXPECT_FALSE(model.loginWithPin());
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Incorrect PIN."));
}

TEST(AttemptThrottle, TheWaitDoublesUpToFiveMinutes)
{
    QDateTime now(QDate(2026, 3, 9), QTime(9, 0));
    Clock::Override clock([&now] { return now; });
    AttemptThrottle throttle;
    QStringList waits;
    for (int wrong = 1; wrong <= 10; ++wrong) {
        throttle.recordFailure();
        try {
            throttle.checkAllowed();
            waits << QStringLiteral("none");
        } catch (const Refusal& refusal) {
            waits << refusal.description().section(QLatin1Char(' '), 5, 6);
        }
    }
    EXPECT_EQ(waits, (QStringList{QStringLiteral("none"), QStringLiteral("none"), QStringLiteral("none"),
                                  QStringLiteral("none"), QStringLiteral("30 seconds"), QStringLiteral("1 minute"),
                                  QStringLiteral("2 minutes"), QStringLiteral("4 minutes"),
                                  QStringLiteral("5 minutes"), QStringLiteral("5 minutes")}));
}
