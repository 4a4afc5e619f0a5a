#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <optional>

// A private CUPS scheduler with one raw queue whose device is a file, for tests that must print
// through the real spooler. While it lives, CUPS_SERVER points this process (Qt's QPrinterInfo and
// QPrinter) and every `lp` it starts at it. One at a time per process, made on the thread that
// prints: libcups keeps its server per thread.
class CupsScheduler {
public:
    CupsScheduler(); // never throws; check isRunning()
    ~CupsScheduler();

    bool isRunning() const { return m_why.isEmpty(); }
    // One sentence for GTEST_SKIP when it couldn't start.
    QString whyNotRunning() const { return m_why; }
    QString queue() const { return QStringLiteral("Receipt"); }

    // The spooled document of each job, oldest first, once `count` jobs have left the queue (or
    // the timeout passed).
    QList<QByteArray> waitForJobDocuments(int count, int timeoutMs = 10000) const;
    // Jobs the scheduler has taken so far, done or not.
    int jobCount() const;
    // lpadmin -x of the receipt queue, to test a queue that vanished.
    bool removeQueue();
    // Another raw queue with a file: device of its own.
    bool addQueue(const QString& name, QString* errors = nullptr);

private:
    bool start();
    bool writeConfiguration();
    std::optional<QByteArray> runTool(const QString& program, const QStringList& arguments,
                                      QString* errors = nullptr) const;

    QTemporaryDir m_dir;
    QString m_socket;
    QProcess m_cupsd;
    QString m_why;
    std::optional<QByteArray> m_previousServer;
    bool m_environmentSet = false;
};
