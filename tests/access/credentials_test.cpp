#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "support/printers.h"

#include <QByteArray>

#include <gtest/gtest.h>

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

TEST(PasswordHasher, SaltIsSixteenRandomBytesInPaddedBase64)
{
    const QString first = PasswordHasher::makeSalt();
    EXPECT_EQ(first.size(), 24);
    const auto decoded =
        QByteArray::fromBase64Encoding(first.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded.decoded.size(), 16);
    EXPECT_NE(first, PasswordHasher::makeSalt());
}

TEST(PinRules, FourToSixNumericCharacters)
{
    const struct {
        const char* fault;
        QString pin;
        bool valid;
    } cases[] = {
        {"four ASCII digits refused", QStringLiteral("1234"), true},
        {"six ASCII digits refused", QStringLiteral("123456"), true},
        {"three digits taken", QStringLiteral("123"), false},
        {"seven digits taken", QStringLiteral("1234567"), false},
        {"a letter taken", QStringLiteral("12a4"), false},
        {"limited to ASCII", QStringLiteral("٠١٢٣"), true},
        // Each of these digits is two UTF-16 units: counting units gets both wrong.
        {"astral digits counted as units", QStringLiteral("𝟏𝟐𝟑𝟒"), true},
        {"astral digits counted as units", QStringLiteral("𝟏𝟐𝟑"), false},
        {"only the first code point of a character checked", QStringLiteral("1\u03012345"), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PinRules::isValid(c.pin), c.valid) << c.fault;
}
