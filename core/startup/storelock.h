#pragma once

#include <QLockFile>
#include <QString>

// Keeps a second copy of the program off a store that is already open, so two windows never
// write beside each other. The lock file lives in the store's support folder; one left behind
// by a process that has died is taken over.
class StoreLock {
public:
    static QString fileName() { return QStringLiteral("tallyrun.lock"); }

    explicit StoreLock(const QString& storePath);
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;
    ~StoreLock();

    // False only when a running process holds the lock. A lock file that can't be written at all
    // doesn't refuse the store: opening it then reports the real problem.
    bool acquire();
    // Before a relaunch, so the new process can take the store over.
    void release();
    bool isHeld() const { return m_lock.isLocked(); }
    QString path() const { return m_path; }

private:
    QString m_folder;
    QString m_path;
    QLockFile m_lock;
};
