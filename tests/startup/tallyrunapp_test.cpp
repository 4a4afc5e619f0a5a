#include "environment/tallyrunapp.h"
#include "startup/marketregistry.h"
#include "startup/storefiles.h"
#include "startup/storelock.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/refusalof.h"
#include "support/teststore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {
struct StartupTest : ::testing::Test {
    QTemporaryDir folder;
    QSettings preferences{folder.filePath("preferences.ini"), QSettings::IniFormat};
    MarketRegistry registry{preferences};
    QString defaultPath = folder.filePath("default.store");

    QString startupFailure()
    {
        return refusalOf([&] { TallyrunApp app(registry, defaultPath); });
    }
};
} // namespace

TEST_F(StartupTest, AFileThatIsNotAStoreStopsStartUpWithItsReason)
{
    QFile file(defaultPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'z'));
    file.close();

    EXPECT_TRUE(startupFailure().startsWith("The store container could not be created."));
    EXPECT_TRUE(StoreLock(defaultPath).acquire()) << "a failed start leaves no lock behind";
}

TEST_F(StartupTest, ASecondCopyOnTheSameStoreIsRefusedUntilTheFirstLetsGo)
{
    TallyrunApp first(registry, defaultPath);
    EXPECT_EQ(startupFailure(), "This store is already open in another Brindle window.");
    first.releaseStoreLock();
    EXPECT_EQ(startupFailure(), "");
}

// A failed read once made a second settings record with the defaults: the receipt numbers started
// again at 1 until the program was restarted.
TEST(AppEnvironment, ASettingsReadThatFailsIsReportedAndMakesNothing)
{
    TestStore store;
    AppEnvironment environment(store.context());
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    EXPECT_EQ(environment.loadOrCreateSettings(), settings);
    performUnitOfWork(store.context(), [&] { settings->setLastReceiptSequence(41); });
    store.reopen();
    AppEnvironment reopened(store.context());
    for (const qint64 nth : {1, 2}) {
        SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
        EXPECT_THROW(reopened.loadOrCreateSettings(), StoreError) << nth;
        SqliteConnection::clearFault();
        EXPECT_FALSE(store.context().hasChanges());
    }
    EXPECT_EQ(countRowsOnDisk(store.path(), "AppSettings"), 1);
    EXPECT_EQ(reopened.loadOrCreateSettings()->lastReceiptSequence(), 41);
}

// A lock that can't be made once said yes, and two copies opened one store side by side.
TEST_F(StartupTest, ALockThatCannotBeMadeRefusesTheStoreInPlainWords)
{
    // A file where the support folder should be: nothing can be made inside it, even by root.
    QFile blocker(StoreFiles::supportFolder(defaultPath));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    StoreLock lock(defaultPath);
    EXPECT_EQ(lock.tryAcquire(), StoreLock::Outcome::cannotBeMade);
    EXPECT_FALSE(lock.acquire());

    const QString failure = startupFailure();
    EXPECT_TRUE(failure.startsWith("Brindle can't write in the store's folder")) << failure.toStdString();
    EXPECT_FALSE(QFile::exists(defaultPath)); // refused before the store was opened
}

namespace {
void write(const QString& path, const QByteArray& bytes = "x")
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

TEST(StoreLock, LockOfAProcessThatDiedDoesNotBlock)
{
    QTemporaryDir folder;
    StoreLock lock(folder.filePath("shop.store"));
    // QLockFile's layout: pid, application, host; no process has this pid.
    write(lock.path(), "2147483646\ntallyrun\n" + QSysInfo::machineHostName().toUtf8() + "\n");

    EXPECT_TRUE(lock.acquire());
    EXPECT_TRUE(lock.isHeld());
}
