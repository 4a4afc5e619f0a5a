#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <optional>

// A private CUPS scheduler with one raw queue whose device is a file, for tests that must print
// through the real spooler. While it lives, CUPS_SERVER points this process (Qt's QPrinterInfo and
// QPrinter) and every `lp` it starts at it. Stops the scheduler and removes its folder when
// destroyed. One at a time per process, made on the thread that prints: the environment is
// restored in the order it was set, and libcups keeps its server per thread.
class CupsScheduler {
public:
    CupsScheduler(); // never throws; check isRunning()
    ~CupsScheduler();
    CupsScheduler(const CupsScheduler&) = delete;
    CupsScheduler& operator=(const CupsScheduler&) = delete;

    bool isRunning() const { return m_why.isEmpty(); }
    // One sentence for GTEST_SKIP when it couldn't start.
    QString whyNotRunning() const { return m_why; }
    QString queue() const { return QStringLiteral("Receipt"); }

    // The spooled document of each job, byte for byte, oldest job first, once `count` jobs are
    // done (completed, or cancelled or aborted: they left the queue either way). After the
    // timeout, those of the jobs done by then.
    QList<QByteArray> waitForJobDocuments(int count, int timeoutMs = 10000) const;
    // Jobs the scheduler has taken so far, done or not.
    int jobCount() const;

    // lpadmin -x of the receipt queue, to test a queue that vanished. Its jobs go with it.
    bool removeQueue();
    // Another raw queue with a file: device of its own.
    bool addQueue(const QString& name);

    // Runs a CUPS client tool (lp, lpstat, lpadmin) against this scheduler in the C locale.
    // Standard error is appended to *errors when given. Empty when the tool failed.
    std::optional<QByteArray> runTool(const QString& program, const QStringList& arguments,
                                      QString* errors = nullptr) const;

private:
    bool start();
    bool writeConfiguration(bool asRoot);
    bool addRawQueue(const QString& name, QString* errors = nullptr) const;
    bool waitUntilListening(int timeoutMs);
    QString errorLogTail() const;
    QString spoolPath() const;
    QList<int> doneJobIds() const;

    QTemporaryDir m_dir;
    QString m_socket;
    QProcess m_cupsd;
    QString m_why;
    std::optional<QByteArray> m_previousServer;
    bool m_environmentSet = false;
};
