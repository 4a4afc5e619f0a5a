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
    // The stored id as it is, even one whose market has gone; null when there is none.
    QUuid activeMarketID() const;
    void setActive(const MarketInfo& market) { setActive(market.id); }
    void setActive(const QUuid& id);

    // AppProfile::supportDirectory()/Markets unless overridden; made on each call.
    QString marketsDirectory() const;
    void setMarketsDirectoryOverride(const std::optional<QString>& folder)
    {
        m_marketsDirectoryOverride = folder;
    }

    // The store to open: the active one, else the first listed (made active), else a new
    // "Default Market" at the default location. A list that was lost or damaged forgets no store:
    // every store file left in the markets folder is listed again after it, under its business name.
    MarketInfo bootstrapIfNeeded();

    // Appends a market with a new id, made now; without a file name it gets "{id}.store".
    MarketInfo createMarket(const QString& name, const std::optional<QString>& storeFileName = std::nullopt);
    // Only the list entry goes: the store's files stay where they are. When it was the active
    // one, the first market left becomes active, or none.
    void removeMarket(const QUuid& id);

private:
    // Names already taken get " (2)", " (3)", ... so that no two entries read the same.
    QList<MarketInfo> storesInMarketsFolder(QStringList takenNames) const;
    static std::optional<QString> businessName(const QString& storePath);
    void storeMarkets(const QList<MarketInfo>& markets);

    QSettings& m_preferences;
    std::optional<QString> m_marketsDirectoryOverride;
};
