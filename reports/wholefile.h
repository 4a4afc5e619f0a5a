#pragma once

#include <QByteArray>
#include <QString>

// Writes a file whole or not at all: the bytes go to "{path}.partial" beside it, are synced to the
// disk, and that file is renamed over `path`. On any failure the side file is removed and `path` is
// as it was. Throws FileWriteError.
void writeWholeFile(const QString& path, const QByteArray& bytes);
