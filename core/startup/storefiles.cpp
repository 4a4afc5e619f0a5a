#include "startup/storefiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString StoreFiles::supportFolder(const QString& storePath)
{
    const QFileInfo main(storePath);
    return main.dir().filePath(QLatin1Char('.') + main.completeBaseName() + QStringLiteral("_SUPPORT"));
}

QStringList StoreFiles::paths(const QString& storePath)
{
    return {storePath, storePath + QStringLiteral("-wal"), storePath + QStringLiteral("-shm"),
            supportFolder(storePath)};
}

void StoreFiles::remove(const QString& storePath)
{
    for (const QString& path : paths(storePath)) {
        const QFileInfo info(path);
        if (info.isDir() && !info.isSymLink())
            QDir(path).removeRecursively();
        else
            QFile::remove(path);
    }
}
