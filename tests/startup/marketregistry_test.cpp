#include "startup/marketregistry.h"

#include "clock/clock.h"
#include "records/appsettings.h"
#include "records/posschema.h"
#include "support/printers.h"
#include "support/testmarkets.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
// A preference file of the test's own, never the user's.
struct Preferences {
    QTemporaryDir folder;
    QSettings settings{folder.filePath("preferences.ini"), QSettings::IniFormat};
    MarketRegistry registry{settings};
};

MarketInfo market(const QString& file)
{
    return {QUuid::createUuid(), file, file, QDateTime::fromSecsSinceEpoch(1700000000)};
}
} // namespace

// One bad entry spoils the whole list, as its id isn't a UUID.
TEST(MarketRegistry, FirstRunOrAnUndecodableListMakesOneActiveDefaultMarketAndKeepsIt)
{
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1710000000);
    Clock::Override clock(now);
    for (const QByteArray& bytes : {QByteArray(), QByteArray("not json"), QByteArray(R"({"id":1})"),
                                    QByteArray(R"([{"id":"x","name":"A","storeFileName":"A","createdAt":0}])")}) {
        SCOPED_TRACE(bytes.constData());
        Preferences preferences;
        if (!bytes.isNull())
            preferences.settings.setValue(MarketRegistry::marketsKey(), bytes);
        EXPECT_TRUE(preferences.registry.allMarkets().isEmpty());

        const MarketInfo made = preferences.registry.bootstrapIfNeeded();
        EXPECT_EQ(made, (MarketInfo{made.id, "Default Market", "__default__", now}));
        EXPECT_EQ(preferences.registry.bootstrapIfNeeded(), made);
        EXPECT_EQ(preferences.registry.allMarkets(), QList<MarketInfo>{made});
        EXPECT_EQ(preferences.settings.value("com.tallyrun.activeMarketID").toString(),
                  made.id.toString(QUuid::WithoutBraces).toUpper());
    }
}

TEST(MarketRegistry, ActiveIdOfARemovedMarketFallsBackToTheFirst)
{
    Preferences preferences;
    const MarketInfo first = market("A.store");
    preferences.settings.setValue(MarketRegistry::marketsKey(),
                                  MarketInfo::encodeList({first, market("B.store")}));
    preferences.registry.setActive(market("Gone.store"));

    EXPECT_EQ(preferences.registry.bootstrapIfNeeded(), first);
    EXPECT_EQ(preferences.registry.activeMarket(), first);
}

TEST(MarketRegistry, SeesAnotherWindowsChangeAtOnce)
{
    Preferences preferences;
    preferences.registry.bootstrapIfNeeded();
    QSettings other(preferences.settings.fileName(), QSettings::IniFormat);
    const MarketInfo added = market("B.store");
    other.setValue(MarketRegistry::marketsKey(), MarketInfo::encodeList({added}));
    MarketRegistry(other).setActive(added);

    EXPECT_EQ(preferences.registry.activeMarket(), added);
}

TEST(MarketRegistry, CreateMarketAppendsAndNamesItsFileAfterTheNewId)
{
    Preferences preferences;
    const MarketInfo first = preferences.registry.bootstrapIfNeeded();
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1720000000);
    Clock::Override clock(now);

    const MarketInfo annex = preferences.registry.createMarket("Annex");
    const MarketInfo named = preferences.registry.createMarket("Osu", QStringLiteral("0A.store"));

    EXPECT_EQ(annex, (MarketInfo{annex.id, "Annex",
                                 annex.id.toString(QUuid::WithoutBraces).toUpper() + ".store", now}));
    EXPECT_EQ(named.storeFileName, "0A.store");
    EXPECT_EQ(preferences.registry.allMarkets(), (QList<MarketInfo>{first, annex, named}));
    EXPECT_EQ(preferences.registry.activeMarket(), first);
}

TEST(MarketRegistry, RemoveMarketMovesTheActiveIdToTheFirstLeftOrClearsIt)
{
    Preferences preferences;
    const MarketInfo a = preferences.registry.createMarket("A");
    const MarketInfo b = preferences.registry.createMarket("B");
    const MarketInfo c = preferences.registry.createMarket("C");
    preferences.registry.setActive(c);

    preferences.registry.removeMarket(a.id); // not the active one: the choice stays
    EXPECT_EQ(preferences.registry.allMarkets(), (QList<MarketInfo>{b, c}));
    EXPECT_EQ(preferences.registry.activeMarket(), c);

    preferences.registry.removeMarket(c.id);
    EXPECT_EQ(preferences.registry.activeMarket(), b);

    preferences.registry.removeMarket(b.id);
    EXPECT_TRUE(preferences.registry.allMarkets().isEmpty());
    EXPECT_FALSE(preferences.settings.contains(MarketRegistry::activeMarketIDKey()));
}

TEST(MarketInfo, ListLayoutIsPinned)
{
    // In every user's preferences: a changed key or unit loses their stores.
    const QByteArray stored = R"([{"createdAt":1700000000.5,"id":"0F8FAD5B-D9CB-469F-A165-70867728950E",)"
                              R"("name":"Front shop","storeFileName":"__default__"}])";
    const QList<MarketInfo> markets = MarketInfo::decodeList(stored);
    ASSERT_EQ(markets.size(), 1);
    EXPECT_EQ(markets[0].id, QUuid::fromString(QStringLiteral("0f8fad5b-d9cb-469f-a165-70867728950e")));
    EXPECT_EQ(markets[0].createdAt.toMSecsSinceEpoch(), 1700000000500);
    EXPECT_EQ(QJsonDocument::fromJson(MarketInfo::encodeList(markets)), QJsonDocument::fromJson(stored));
}

namespace {
// A store file in Markets, as New Store leaves it, for a business of that name.
void makeStore(const QString& path, const QString& businessName)
{
    ModelContainer container(path, POSSchema::description());
    auto settings = std::make_shared<AppSettings>();
    settings->setBusinessName(businessName);
    container.mainContext().insert(settings);
    container.mainContext().save();
}
} // namespace

// A damaged preferences file loses the list, not the stores: each file in Markets comes back
// under the business name in its settings, after the fresh Default Market, which stays open.
TEST(MarketRegistry, ALostListIsMadeAgainFromTheStoreFilesInMarkets)
{
    TestMarkets markets;
    const QDir folder(markets.registry.marketsDirectory());
    const QUuid osuID = QUuid::fromString(QStringLiteral("0f8fad5b-d9cb-469f-a165-70867728950e"));
    const QString osuFile = Record::uuidText(osuID) + ".store";
    makeStore(folder.filePath(osuFile), " Osu Provisions ");
    makeStore(folder.filePath("B-second.store"), "osu provisions"); // one name for two stores
    makeStore(folder.filePath("C-unnamed.store"), "");
    QFile junk(folder.filePath("D-damaged.store"));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("not a store");
    junk.close();
    markets.settings.setValue(MarketRegistry::marketsKey(), QByteArray("[{\"id\": tru"));

    const MarketInfo open = markets.registry.bootstrapIfNeeded();

    EXPECT_EQ(open.name, "Default Market");
    EXPECT_TRUE(open.isDefaultStore());
    QStringList listed;
    for (const MarketInfo& market : markets.registry.allMarkets())
        listed << market.name + " = " + market.storeFileName;
    // In file-name order, the second of one name told apart, a store without one (or that can't be
    // read) under its file's name.
    EXPECT_EQ(listed, (QStringList{"Default Market = __default__", "Osu Provisions = " + osuFile,
                                   "osu provisions (2) = B-second.store", "C-unnamed = C-unnamed.store",
                                   "D-damaged = D-damaged.store"}));
    EXPECT_EQ(markets.registry.allMarkets().value(1).id, osuID) << "the file's own UUID stays its id";
    EXPECT_EQ(markets.registry.activeMarket(), open);
}
