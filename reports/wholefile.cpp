#include "reports/wholefile.h"

#include "reports/filewriteerror.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {
// errno is read right after the call that failed, before anything else can change it.
[[noreturn]] void fail(const QString& path, const QString& sidePath, int error)
{
    QFile::remove(sidePath);
    const QString name = QFileInfo(path).fileName();
    if (error == ENOSPC || error == EDQUOT)
        throw FileWriteError::diskFull(name);
    throw FileWriteError::notSaved(name, QString::fromLocal8Bit(std::strerror(error)));
}
} // namespace

void writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString sidePath = path + QStringLiteral(".partial");
    QFile file(sidePath);
    // Unbuffered, so that a short write fails here with its own errno rather than at close.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        fail(path, sidePath, errno);
    if (file.write(bytes) != bytes.size())
        fail(path, sidePath, errno);
    // A file renamed into place before its bytes reach the disk can be empty after a power cut.
    if (::fsync(file.handle()) != 0)
        fail(path, sidePath, errno);
    file.close();
    // rename() replaces a file already at path in one step, as QFile::rename won't.
    if (std::rename(QFile::encodeName(sidePath).constData(), QFile::encodeName(path).constData()) != 0)
        fail(path, sidePath, errno);
}
