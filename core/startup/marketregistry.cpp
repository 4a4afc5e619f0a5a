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
    m_preferences.sync();
    const QUuid activeID = QUuid::fromString(m_preferences.value(activeMarketIDKey()).toString());
    if (activeID.isNull())
        return std::nullopt;
    for (const MarketInfo& market : allMarkets()) {
        if (market.id == activeID)
            return market;
    }
    return std::nullopt;
}

void MarketRegistry::setActive(const MarketInfo& market)
{
    m_preferences.setValue(activeMarketIDKey(), Record::uuidText(market.id));
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

void MarketRegistry::storeMarkets(const QList<MarketInfo>& markets)
{
    m_preferences.setValue(marketsKey(), MarketInfo::encodeList(markets));
    m_preferences.sync();
}
