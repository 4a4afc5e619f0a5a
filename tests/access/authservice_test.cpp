#include "access/authservice.h"
#include "access/loginviewmodel.h"
#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "clock/clock.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

#include <QByteArray>

#include <gtest/gtest.h>

namespace {

const char* const wrongCredentials = "Incorrect username or password.";
const char* const disabled = "This account has been disabled. See an admin.";
const char* const pinFormat = "A PIN is 4 to 6 digits.";
const char* const pinInUse = "Someone else already has that PIN. Choose another.";

class AuthServiceTest : public ::testing::Test {
protected:
    TestStore store;
    AuthService auth{store.context()};
};

TEST_F(AuthServiceTest, SignInByPasswordAndByPin)
{
    const Ref<User> ama = addUser(store.context(), {.pin = QStringLiteral("1234")});
    addUser(store.context(),
            {.username = QStringLiteral("kofi"), .pin = QStringLiteral("9999"), .isActive = false});
    const struct {
        const char* fault;
        std::optional<QString> username; // absent: sign in by PIN
        QString secret;
        const char* message;
    } cases[] = {
        {"username not trimmed or lower-cased", QStringLiteral(" AMA\t\n"), QStringLiteral("secret1"), ""},
        {"password trimmed", QStringLiteral("ama"), QStringLiteral("secret1 "), wrongCredentials},
        {"disabled account let in", QStringLiteral("kofi"), QStringLiteral("secret1"), disabled},
        {"disabled told without its password", QStringLiteral("kofi"), QStringLiteral("wrong1"),
         wrongCredentials},
        {"PIN not found", std::nullopt, QStringLiteral("1234"), ""},
        // At sign-in a malformed PIN is simply not found, not a format error.
        {"PIN format checked at sign-in", std::nullopt, QStringLiteral("123"), "Incorrect PIN."},
        {"PIN trimmed at sign-in", std::nullopt, QStringLiteral(" 1234"), "Incorrect PIN."},
        {"disabled PIN let in", std::nullopt, QStringLiteral("9999"), disabled},
    };
    for (const auto& c : cases) {
        Ref<User> signedIn;
        EXPECT_EQ(refusalOf([&] {
                      signedIn = c.username ? auth.login(*c.username, c.secret) : auth.loginWithPin(c.secret);
                  }),
                  QString::fromUtf8(c.message))
            << c.fault;
        EXPECT_EQ(signedIn, *c.message ? nullptr : ama) << c.fault;
    }
}

TEST_F(AuthServiceTest, SetPin)
{
    addUser(store.context(), {.pin = QStringLiteral("1234")});
    addUser(store.context(),
            {.username = QStringLiteral("esi"), .pin = QStringLiteral("9999"), .isActive = false});
    const Ref<User> kofi =
        addUser(store.context(), {.username = QStringLiteral("kofi"), .pin = QStringLiteral("5555")});
    const struct {
        const char* fault;
        std::optional<QString> pin;
        const char* message;
        std::optional<QString> stored; // kofi's PIN afterwards
    } cases[] = {
        {"own PIN counted as taken", QStringLiteral("5555"), "", QStringLiteral("5555")},
        {"blanks kept", QStringLiteral(" \t4321 "), "", QStringLiteral("4321")},
        {"seven digits taken", QStringLiteral("1234567"), pinFormat, QStringLiteral("4321")},
        {"letter taken", QStringLiteral("12a4"), pinFormat, QStringLiteral("4321")},
        {"another's PIN given out", QStringLiteral("1234"), pinInUse, QStringLiteral("4321")},
        {"disabled user's PIN given out", QStringLiteral("9999"), pinInUse, QStringLiteral("4321")},
        {"blank PIN refused", QStringLiteral("  \t "), "", std::nullopt},
        {"absent PIN refused", std::nullopt, "", std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusalOf([&] { auth.setPin(c.pin, kofi); }), QString::fromUtf8(c.message)) << c.fault;
        EXPECT_EQ(kofi->pin(), c.stored) << c.fault;
        EXPECT_FALSE(store.context().hasChanges()) << c.fault;
    }
}

} // namespace

// Digests live in every store. These were computed outside the program (Python's hashlib over the
// UTF-8 of salt text + password) and must never change.
TEST(PasswordHasher, DigestOfKnownInputsIsPinned)
{
    const QString salt = QStringLiteral("AAAAAAAAAAAAAAAAAAAAAA==");
    EXPECT_EQ(PasswordHasher::hash(QStringLiteral("secret1"), salt),
              QStringLiteral("df4eac70c7bf4c20eaca16e0eef632cc22901125ff4592c0357be6b390b05d92"));
    EXPECT_EQ(PasswordHasher::hash(QStringLiteral("pässwörd "), salt),
              QStringLiteral("4378b2dcd631bd73ef574a3b7ea1bb9d1ec70622caad8256d214774f2b0cab86"));
}

TEST(PinRules, FourToSixNumericCharacters)
{
    const struct {
        const char* fault;
        QString pin;
        bool valid;
    } cases[] = {
        {"four ASCII digits refused", QStringLiteral("1234"), true},
        {"three digits taken", QStringLiteral("123"), false},
        {"a letter taken", QStringLiteral("12a4"), false},
        {"limited to ASCII", QStringLiteral("٠١٢٣"), true},
        // Each of these digits is two UTF-16 units: counting units gets both wrong.
        {"astral digits counted as units", QStringLiteral("𝟏𝟐𝟑𝟒"), true},
        {"only the first code point of a character checked", QStringLiteral("1\u03012345"), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PinRules::isValid(c.pin), c.valid) << c.fault;
}

struct LoginViewModelTest : ::testing::Test {
    TestStore store;
    AuthService auth{store.context()};
    SessionStore session;
    AttemptThrottle throttle;
    LoginViewModel model{auth, session, throttle};
    Ref<User> ama = addUser(store.context(), {.pin = QStringLiteral("1234")});
};

TEST_F(LoginViewModelTest, WrongEntryStaysToBeCorrectedAndARightOneClearsOnlyTheSecret)
{
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

    // The throttle guards the PIN too: after the free tries even the right PIN waits.
    QDateTime now(QDate(2026, 3, 9), QTime(9, 0));
    Clock::Override clock([&now] { return now; });
    model.setIsUsingPin(true);
    for (int wrong = 0; wrong < AttemptThrottle::freeTries; ++wrong) {
        model.setPin(QStringLiteral("9999"));
        EXPECT_FALSE(model.loginWithPin());
    }
    model.setPin(QStringLiteral("1234"));
    EXPECT_FALSE(model.loginWithPin());
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Too many wrong tries. Wait 30 seconds before trying again."));
    now = now.addSecs(30);
    EXPECT_TRUE(model.loginWithPin());
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
    EXPECT_EQ(waits, (QStringList{"none", "none", "none", "none", "30 seconds", "1 minute", "2 minutes", "4 minutes",
                                  "5 minutes", "5 minutes"}));
}
