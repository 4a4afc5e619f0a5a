#pragma once

#include "records/appsettings.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <functional>
#include <optional>

// The first-run screen's state: names the business and makes its first admin, who is then
// signed in without typing anything again.
class FirstRunSetupModel : public ViewModel {
    Q_OBJECT

public:
    using SettingsLoader = std::function<Ref<AppSettings>()>;

    // loadOrCreateSettings gives the store's one settings record, making it when there is none.
    FirstRunSetupModel(ModelContext& context, SettingsLoader loadOrCreateSettings, SessionStore& session,
                       QObject* parent = nullptr);

    QString businessName() const { return m_businessName; }
    void setBusinessName(const QString& text);
    QString adminName() const { return m_adminName; }
    void setAdminName(const QString& text);
    QString adminUsername() const { return m_adminUsername; }
    void setAdminUsername(const QString& text);
    QString adminPassword() const { return m_adminPassword; }
    void setAdminPassword(const QString& text);
    QString confirmPassword() const { return m_confirmPassword; }
    void setConfirmPassword(const QString& text);

    // Returns whether the admin was made and signed in; otherwise errorMessage says why.
    bool create();

Q_SIGNALS:
    void businessNameChanged();
    void adminNameChanged();
    void adminUsernameChanged();
    void adminPasswordChanged();
    void confirmPasswordChanged();

private:
    void assign(QString& field, const QString& value, void (FirstRunSetupModel::*changed)());
    std::optional<QString> validationMessage() const;

    ModelContext& m_context;
    SettingsLoader m_loadOrCreateSettings;
    SessionStore& m_session;
    QString m_businessName;
    QString m_adminName;
    QString m_adminUsername;
    QString m_adminPassword;
    QString m_confirmPassword;
};
