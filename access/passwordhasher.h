#pragma once

#include <QString>

// The stored form of a password: SHA-256 over the salt text followed by the password, as lower-case
// hex. Stores already hold digests made this way, so the recipe can't change.
class PasswordHasher {
public:
    // The shortest password the account forms accept, in characters a person sees.
    static constexpr int minimumPasswordLength = 6;

    // 64 lower-case hex characters. The salt is used as its base64 text, not decoded.
    static QString hash(const QString& password, const QString& salt);
    // 16 random bytes in padded base64: always 24 characters.
    static QString makeSalt();
};
