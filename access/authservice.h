#pragma once

#include "access/authservicing.h"
#include "store/modelcontext.h"

class AuthService : public AuthServicing {
public:
    explicit AuthService(ModelContext& context);

    Ref<User> login(const QString& username, const QString& password) override;
    Ref<User> loginWithPin(const QString& pin) override;
    void setPin(const std::optional<QString>& pin, const Ref<User>& user) override;
    void setActive(const Ref<User>& user, bool isActive, const Ref<User>& by) override;
    void checkPin(const QString& pin, const Ref<User>& forUser) override;
    void updateUser(const Ref<User>& user, const QString& name, UserRole role) override;
    void resetPassword(const Ref<User>& user, const QString& password) override;

private:
    // Throws AuthError::lastActiveAdmin when `user` is the one active admin left: without one,
    // nobody could reach Settings, approve at the till or make another admin.
    void keepAnActiveAdminBesides(const User& user);

    ModelContext& m_context;
};
