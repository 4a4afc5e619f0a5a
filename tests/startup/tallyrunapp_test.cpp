#include "environment/startuperror.h"
#include "environment/tallyrunapp.h"

#include "records/posschema.h"
#include "startup/marketregistry.h"
#include "store/storeerror.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {
struct StartupTest : ::testing::Test {
    QTemporaryDir folder;
    QSettings preferences{folder.filePath("preferences.ini"), QSettings::IniFormat};
    MarketRegistry registry{preferences};
    QString defaultPath = folder.filePath("default.store");

    QString startupFailure()
    {
        try {
            TallyrunApp app(registry, defaultPath);
        } catch (const StartupError& error) {
            return error.description();
        }
        return {};
    }
};
} // namespace

TEST_F(StartupTest, OtherMarketsOpenInsideTheMarketsDirectory)
{
    registry.setMarketsDirectoryOverride(folder.filePath("Markets"));
    const MarketInfo salon{QUuid::createUuid(), "Salon", "SALON.store", QDateTime::currentDateTime()};
    preferences.setValue(MarketRegistry::marketsKey(), MarketInfo::encodeList({salon}));

    TallyrunApp app(registry, defaultPath);

    EXPECT_EQ(app.market(), salon);
    EXPECT_EQ(app.modelContainer().path(), folder.filePath("Markets/SALON.store"));
    EXPECT_FALSE(QFile::exists(defaultPath));
}

TEST_F(StartupTest, AFileThatIsNotAStoreStopsStartUpWithItsReason)
{
    QFile file(defaultPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'z'));
    file.close();
    QString reason;
    try {
        ModelContainer probe(defaultPath, POSSchema::description());
    } catch (const StoreError& error) {
        reason = error.description();
    }
    ASSERT_FALSE(reason.isEmpty());

    const QString failure = startupFailure();
    EXPECT_TRUE(failure.startsWith("The store container could not be created.")) << failure.toStdString();
    EXPECT_TRUE(failure.contains(reason)) << failure.toStdString();
    // Nor does the failed start leave a lock behind to block the next attempt.
    EXPECT_TRUE(StoreLock(defaultPath).acquire());
}

TEST_F(StartupTest, ASecondCopyOnTheSameStoreIsRefusedUntilTheFirstLetsGo)
{
    TallyrunApp first(registry, defaultPath);
    EXPECT_EQ(startupFailure(), "This store is already open in another Tallyrun window.");
    first.releaseStoreLock();
    EXPECT_EQ(startupFailure(), "");
}

TEST(AppEnvironment, LoadOrCreateSettingsMakesOneRecordOnlyAcrossLaunches)
{
    TestStore store;
    {
        AppEnvironment environment(store.context());
        const Ref<AppSettings> made = environment.loadOrCreateSettings();
        EXPECT_EQ(environment.loadOrCreateSettings(), made);
    }
    store.reopen();
    AppEnvironment(store.context()).loadOrCreateSettings();
    EXPECT_EQ(countRowsOnDisk(store.path(), "AppSettings"), 1);
}
