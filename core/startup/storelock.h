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

    enum class Outcome { acquired, heldElsewhere, cannotBeMade };

    // Fails closed: a lock that can't be made (its folder can't be written) is no proof that no
    // other copy is open, so it refuses the store as a held one does.
    Outcome tryAcquire();
    bool acquire() { return tryAcquire() == Outcome::acquired; }
    // Before a relaunch, so the new process can take the store over.
    void release();
    bool isHeld() const { return m_lock.isLocked(); }
    QString path() const { return m_path; }

private:
    QString m_folder;
    QString m_path;
    QLockFile m_lock;
};
