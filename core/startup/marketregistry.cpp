#include "startup/marketregistry.h"

#include "clock/clock.h"
#include "startup/appprofile.h"
#include "store/record.h"
#include "store/sqlite.h"
#include "store/storeerror.h"

#include <QDir>
#include <QFileInfo>

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
    storeMarkets(QList<MarketInfo>{market} + storesInMarketsFolder({market.name}));
    setActive(market);
    return market;
}

QList<MarketInfo> MarketRegistry::storesInMarketsFolder(QStringList takenNames) const
{
    QList<MarketInfo> found;
    const QDir folder(marketsDirectory());
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.store")}, QDir::Files, QDir::Name)) {
        const QUuid fromFileName = QUuid::fromString(file.completeBaseName());
        const QString readName = businessName(file.filePath()).value_or(file.completeBaseName());
        QString name = readName;
        // The Switch Store menu tells stores apart by name alone.
        for (int n = 2; takenNames.contains(name, Qt::CaseInsensitive); ++n)
            name = QStringLiteral("%1 (%2)").arg(readName).arg(n);
        takenNames << name;
        found << MarketInfo{fromFileName.isNull() ? QUuid::createUuid() : fromFileName, name, file.fileName(),
                            file.lastModified()};
    }
    return found;
}

std::optional<QString> MarketRegistry::businessName(const QString& storePath)
{
    try {
        SqliteConnection store;
        store.open(storePath);
        const QString name =
            store.scalar(QStringLiteral("SELECT \"businessName\" FROM \"AppSettings\" ORDER BY rowid LIMIT 1"))
                .toString()
                .trimmed();
        if (!name.isEmpty())
            return name;
    } catch (const StoreError& error) {
        qCWarning(lcStore) << "No business name in" << storePath << error.description();
    }
    return std::nullopt;
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
