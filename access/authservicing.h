#pragma once

#include "records/user.h"

#include <QString>

#include <optional>

// Sign-in and the account changes that guard it. Every operation throws AuthError when refused and
// lets StoreError through untouched; a refused operation leaves every record as it was.
class AuthServicing {
public:
    virtual ~AuthServicing() = default;

    // The username is trimmed and lower-cased; the password is taken exactly as typed.
    virtual Ref<User> login(const QString& username, const QString& password) = 0;
    // The text is compared as typed: no trimming and no format check.
    virtual Ref<User> loginWithPin(const QString& pin) = 0;

    // An absent or blank PIN removes the user's PIN.
    virtual void setPin(const std::optional<QString>& pin, const Ref<User>& user) = 0;
    // `by` is the acting user; nobody may switch themselves off, nor the last active admin.
    virtual void setActive(const Ref<User>& user, bool isActive, const Ref<User>& by) = 0;
    // A new name and role in one unit of work; the last active admin stays an admin.
    virtual void updateUser(const Ref<User>& user, const QString& name, UserRole role) = 0;
    // For someone who forgot theirs: a fresh salt and the digest of `password`, taken as typed.
    // The length rule is the form's.
    virtual void resetPassword(const Ref<User>& user, const QString& password) = 0;
    // Whether `pin` may be given to `forUser` (null for an account not yet created).
    virtual void checkPin(const QString& pin, const Ref<User>& forUser) = 0;
};
