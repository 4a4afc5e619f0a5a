#pragma once

#include "startup/marketinfo.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <functional>
#include <optional>

class MarketRegistry;

// The New Store sheet's state: makes the new store's file with its first admin, then lists it.
// The store isn't opened: the program only ever runs on the store it started with.
class NewMarketModel : public ViewModel {
    Q_OBJECT

public:
    // Makes the store file; MarketProvisioner::provision unless a test hands in another.
    using Provision =
        std::function<void(const QString& storePath, const QString& marketName, const QString& adminName,
                           const QString& adminUsername, const QString& adminPassword)>;

    explicit NewMarketModel(MarketRegistry& registry, Provision provision = {}, QObject* parent = nullptr);

    QString marketName() const { return m_marketName; }
    void setMarketName(const QString& text) { m_marketName = text; }
    QString adminName() const { return m_adminName; }
    void setAdminName(const QString& text) { m_adminName = text; }
    QString adminUsername() const { return m_adminUsername; }
    void setAdminUsername(const QString& text) { m_adminUsername = text; }
    QString adminPassword() const { return m_adminPassword; }
    void setAdminPassword(const QString& text) { m_adminPassword = text; }
    QString confirmPassword() const { return m_confirmPassword; }
    void setConfirmPassword(const QString& text) { m_confirmPassword = text; }

    // The store that create() made and listed; absent until then.
    std::optional<MarketInfo> createdMarket() const { return m_createdMarket; }

    // Returns whether the store was made and listed. On a failure nothing is listed, no file is
    // left behind, and errorMessage says why.
    bool create();

Q_SIGNALS:
    void createdMarketChanged();

private:
    MarketRegistry& m_registry;
    Provision m_provision;
    QString m_marketName;
    QString m_adminName;
    QString m_adminUsername;
    QString m_adminPassword;
    QString m_confirmPassword;
    std::optional<MarketInfo> m_createdMarket;
};
