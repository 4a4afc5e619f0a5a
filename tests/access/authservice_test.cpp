#include "access/authservice.h"

#include "store/storeerror.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "userbuilder.h"

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
        EXPECT_EQ(failureOf([&] {
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
        EXPECT_EQ(failureOf([&] { auth.setPin(c.pin, kofi); }), QString::fromUtf8(c.message)) << c.fault;
        EXPECT_EQ(kofi->pin(), c.stored) << c.fault;
        EXPECT_FALSE(store.context().hasChanges()) << c.fault;
    }
}

TEST_F(AuthServiceTest, NobodySwitchesThemselvesOff)
{
    const Ref<User> admin =
        addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    EXPECT_EQ(
        failureOf([&] { auth.setActive(admin, false, admin); }),
        QStringLiteral("You can't deactivate the account you're signed in with — that would lock you out. "
                       "Sign in as another admin to do it."));
    EXPECT_TRUE(admin->isActive());
    auth.setActive(admin, false, nullptr);
    EXPECT_FALSE(admin->isActive());
}

TEST_F(AuthServiceTest, FailedSavePassesTheStoreErrorOnAndLeavesNothingPending)
{
    const Ref<User> ama = addUser(store.context());
    store.context().connection().execute(QStringLiteral(
        "CREATE TRIGGER refuse BEFORE UPDATE ON \"User\" BEGIN SELECT RAISE(ABORT, 'disk is full'); END"));
    EXPECT_THROW(auth.setPin(QStringLiteral("4321"), ama), StoreError);
    EXPECT_EQ(ama->pin(), std::nullopt);
    EXPECT_FALSE(store.context().hasChanges());
}

} // namespace
