#include "startup/storefiles.h"
#include "startup/storelock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
void write(const QString& path, const QByteArray& bytes = "x")
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

TEST(StoreFiles, RemoveDeletesWhatExistsAndSkipsWhatDoesNot)
{
    QTemporaryDir folder;
    // No -wal: its absence must not stop the rest. The names are what backups and restores look for.
    for (const char* name : {"shop.store", "shop.store-shm", ".shop_SUPPORT/logos/logo.png", "other.store"})
        write(folder.filePath(name));

    StoreFiles::remove(folder.filePath("shop.store"));

    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{"other.store"});
}

TEST(StoreLock, RefusesASecondHolderUntilReleased)
{
    QTemporaryDir folder;
    const QString store = folder.filePath("shop.store");
    StoreLock first(store);
    StoreLock second(store);

    ASSERT_TRUE(first.acquire());
    EXPECT_EQ(QFileInfo(first.path()).path(), folder.filePath(".shop_SUPPORT"));
    EXPECT_FALSE(second.acquire());
    first.release();
    EXPECT_TRUE(second.acquire());
}

TEST(StoreLock, LockOfAProcessThatDiedDoesNotBlock)
{
    QTemporaryDir folder;
    StoreLock lock(folder.filePath("shop.store"));
    // QLockFile's layout: pid, application, host; no process has this pid.
    write(lock.path(), "2147483646\ntallyrun\n" + QSysInfo::machineHostName().toUtf8() + "\n");

    EXPECT_TRUE(lock.acquire());
    EXPECT_TRUE(lock.isHeld());
}
