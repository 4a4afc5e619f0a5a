#include "startup/marketregistry.h"

#include "clock/clock.h"
#include "startup/appprofile.h"
#include "store/record.h"

#include <QDir>

MarketRegistry::MarketRegistry(QSettings& preferences)
    : m_preferences(preferences)
{
}

QList<MarketInfo> MarketRegistry::allMarkets() const
{
    m_preferences.sync();
    return MarketInfo::decodeList(m_preferences.value(marketsKey()).toByteArray());
}

std::optional<MarketInfo> MarketRegistry::activeMarket() const
{
    const QUuid activeID = activeMarketID();
    if (activeID.isNull())
        return std::nullopt;
    for (const MarketInfo& market : allMarkets()) {
        if (market.id == activeID)
            return market;
    }
    return std::nullopt;
}

QUuid MarketRegistry::activeMarketID() const
{
    m_preferences.sync();
    return QUuid::fromString(m_preferences.value(activeMarketIDKey()).toString());
}

void MarketRegistry::setActive(const QUuid& id)
{
    m_preferences.setValue(activeMarketIDKey(), Record::uuidText(id));
    m_preferences.sync();
}

QString MarketRegistry::marketsDirectory() const
{
    const QString folder =
        m_marketsDirectoryOverride.value_or(AppProfile::supportDirectory() + QStringLiteral("/Markets"));
    QDir().mkpath(folder);
    return folder;
}

MarketInfo MarketRegistry::bootstrapIfNeeded()
{
    if (const std::optional<MarketInfo> active = activeMarket())
        return *active;
    const QList<MarketInfo> markets = allMarkets();
    if (!markets.isEmpty()) {
        setActive(markets.first());
        return markets.first();
    }
    const MarketInfo market{QUuid::createUuid(), QStringLiteral("Default Market"),
                            MarketInfo::defaultStoreFileName(), Clock::now()};
    storeMarkets({market});
    setActive(market);
    return market;
}

MarketInfo MarketRegistry::createMarket(const QString& name, const std::optional<QString>& storeFileName)
{
    const QUuid id = QUuid::createUuid();
    const MarketInfo market{id, name, storeFileName.value_or(Record::uuidText(id) + QStringLiteral(".store")),
                            Clock::now()};
    QList<MarketInfo> markets = allMarkets();
    markets.append(market);
    storeMarkets(markets);
    return market;
}

void MarketRegistry::removeMarket(const QUuid& id)
{
    QList<MarketInfo> markets = allMarkets();
    markets.removeIf([&id](const MarketInfo& market) { return market.id == id; });
    storeMarkets(markets);
    if (activeMarketID() != id)
        return;
    if (markets.isEmpty()) {
        m_preferences.remove(activeMarketIDKey());
        m_preferences.sync();
    } else {
        setActive(markets.first());
    }
}

void MarketRegistry::storeMarkets(const QList<MarketInfo>& markets)
{
    // Encoded in full before anything is written, so a failure leaves the stored list as it was.
    const QByteArray encoded = MarketInfo::encodeList(markets);
    m_preferences.setValue(marketsKey(), encoded);
    m_preferences.sync();
}
