#pragma once

#include "startup/marketinfo.h"

#include <QSettings>

#include <optional>

// The list of stores on this machine and which one is open. The preferences are the only copy:
// every call reads them again, so another window's change is never hidden behind a cache.
class MarketRegistry {
public:
    static QString marketsKey() { return QStringLiteral("com.tallyrun.markets"); }
    static QString activeMarketIDKey() { return QStringLiteral("com.tallyrun.activeMarketID"); }

    explicit MarketRegistry(QSettings& preferences);

    // Empty when the key is absent or doesn't decode.
    QList<MarketInfo> allMarkets() const;
    std::optional<MarketInfo> activeMarket() const;
    void setActive(const MarketInfo& market);

    // AppProfile::supportDirectory()/Markets unless overridden; made on each call.
    QString marketsDirectory() const;
    void setMarketsDirectoryOverride(const std::optional<QString>& folder)
    {
        m_marketsDirectoryOverride = folder;
    }

    // The store to open: the active one, else the first listed (made active), else a new
    // "Default Market" at the default location.
    MarketInfo bootstrapIfNeeded();

private:
    void storeMarkets(const QList<MarketInfo>& markets);

    QSettings& m_preferences;
    std::optional<QString> m_marketsDirectoryOverride;
};
