#pragma once

#include <QString>
#include <QStringList>

// The files that together make one store: the main file, SQLite's "-wal" and "-shm" companions,
// and the support folder ".{name without extension}_SUPPORT" beside them.
class StoreFiles {
public:
    static QStringList paths(const QString& storePath);
    static QString supportFolder(const QString& storePath);
    // Deletes each of the four that exists; one that is missing or won't go doesn't stop the rest.
    static void remove(const QString& storePath);
};
