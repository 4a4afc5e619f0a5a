#pragma once

#include "access/autherror.h"
#include "support/refusalof.h"
#include "access/passwordhasher.h"
#include "records/user.h"
#include "store/modelcontext.h"

#include <optional>

// A saved account with a real salt and digest, so sign-in runs end to end.
struct NewUser {
    QString username = QStringLiteral("ama");
    std::optional<QString> pin = std::nullopt;
    bool isActive = true;
    UserRole role = UserRole::cashier;
    QString name = QStringLiteral("Ama");
};

inline Ref<User> addUser(ModelContext& context, const NewUser& fields = {})
{
    auto user = std::make_shared<User>();
    user->setName(fields.name);
    user->setUsername(fields.username);
    user->setPasswordSalt(PasswordHasher::makeSalt());
    user->setPasswordHash(PasswordHasher::hash(QStringLiteral("secret1"), user->passwordSalt()));
    user->setPin(fields.pin);
    user->setIsActive(fields.isActive);
    user->setRole(fields.role);
    context.insert(user);
    context.save();
    return user;
}
