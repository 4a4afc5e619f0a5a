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

private:
    ModelContext& m_context;
};
