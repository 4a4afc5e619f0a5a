#include "startup/storelock.h"

#include "startup/storefiles.h"

#include <QDir>

StoreLock::StoreLock(const QString& storePath)
    : m_folder(StoreFiles::supportFolder(storePath))
    , m_path(QDir(m_folder).filePath(fileName()))
    , m_lock(m_path)
{
    // A window stays open for days: age alone must never make its lock look abandoned, only a
    // holder that is no longer running.
    m_lock.setStaleLockTime(0);
}

StoreLock::~StoreLock() = default;

StoreLock::Outcome StoreLock::tryAcquire()
{
    QDir().mkpath(m_folder);
    if (m_lock.tryLock(0))
        return Outcome::acquired;
    return m_lock.error() == QLockFile::LockFailedError ? Outcome::heldElsewhere : Outcome::cannotBeMade;
}

void StoreLock::release()
{
    m_lock.unlock();
}
