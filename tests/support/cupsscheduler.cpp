#include "support/cupsscheduler.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <QUrl>

#include <algorithm>
#include <csignal>
#include <cstring>

#include <dlfcn.h>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const char* const serverVariable = "CUPS_SERVER";

QString findTool(const QString& name)
{
    // sbin is often not on a user's PATH.
    const QString onPath = QStandardPaths::findExecutable(name);
    return onPath.isEmpty()
               ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")})
               : onPath;
}

// The socket's path must fit sockaddr_un, so a long TMPDIR gives way to /tmp.
QString folderTemplate()
{
    const QString name = QStringLiteral("/tallyrun-cups-XXXXXX");
    const QString root = QDir::tempPath();
    return (root.size() + name.size() + 16 > int(sizeof(sockaddr_un::sun_path)) ? QStringLiteral("/tmp") : root) +
           name;
}

// libcups reads CUPS_SERVER once per thread and keeps it: without this, a second scheduler in the
// same test executable would be invisible to Qt.
void forgetCupsServer()
{
    void* cups = dlopen("libcups.so.2", RTLD_LAZY | RTLD_NOLOAD);
    if (!cups)
        return; // not loaded yet: it reads the variable when it is
    if (void* symbol = dlsym(cups, "cupsSetServer")) {
        void (*setServer)(const char*) = nullptr;
        std::memcpy(&setServer, &symbol, sizeof setServer);
        setServer(nullptr);
    }
    dlclose(cups);
}

bool canConnect(const QString& socketPath)
{
    const QByteArray path = QFile::encodeName(socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), std::min(size_t(path.size()), sizeof address.sun_path - 1));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected = fd >= 0 && ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    if (fd >= 0)
        ::close(fd);
    return connected;
}

} // namespace

CupsScheduler::CupsScheduler()
    : m_dir(folderTemplate())
{
    if (!start()) {
        m_cupsd.kill();
        m_cupsd.waitForFinished(3000);
        return;
    }
    if (qEnvironmentVariableIsSet(serverVariable))
        m_previousServer = qgetenv(serverVariable);
    qputenv(serverVariable, QFile::encodeName(m_socket));
    m_environmentSet = true;
    forgetCupsServer();
}

CupsScheduler::~CupsScheduler()
{
    if (m_environmentSet) {
        if (m_previousServer)
            qputenv(serverVariable, *m_previousServer);
        else
            qunsetenv(serverVariable);
        forgetCupsServer();
    }
    if (m_cupsd.state() == QProcess::NotRunning)
        return;
    m_cupsd.terminate();
    if (!m_cupsd.waitForFinished(3000)) {
        m_cupsd.kill();
        m_cupsd.waitForFinished(3000);
    }
}

bool CupsScheduler::start()
{
    for (const QString& tool : {QStringLiteral("cupsd"), QStringLiteral("lpadmin"), QStringLiteral("lp"),
                                QStringLiteral("lpstat")}) {
        if (findTool(tool).isEmpty()) {
            m_why = QStringLiteral("%1 was not found; install the packages cups and cups-client.").arg(tool);
            return false;
        }
    }
    if (!m_dir.isValid()) {
        m_why = QStringLiteral("No folder for the scheduler: %1.").arg(m_dir.errorString());
        return false;
    }
    m_socket = m_dir.filePath(QStringLiteral("cups.sock"));
    if (!writeConfiguration())
        return false;

    m_cupsd.setProgram(findTool(QStringLiteral("cupsd")));
    m_cupsd.setArguments({QStringLiteral("-f"), QStringLiteral("-c"), m_dir.filePath(QStringLiteral("cupsd.conf")),
                          QStringLiteral("-s"), m_dir.filePath(QStringLiteral("cups-files.conf"))});
    // Errors before its log is open go to standard error.
    m_cupsd.setProcessChannelMode(QProcess::MergedChannels);
    m_cupsd.setStandardOutputFile(m_dir.filePath(QStringLiteral("cupsd.out")));
    // A test that crashes or is killed takes its scheduler with it.
    m_cupsd.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_cupsd.start();
    QElapsedTimer timer;
    timer.start();
    while (m_cupsd.waitForStarted(5000) && !canConnect(m_socket) && !m_cupsd.waitForFinished(10) &&
           !timer.hasExpired(5000)) {
    }
    if (!canConnect(m_socket)) {
        m_why = QStringLiteral("cupsd did not start listening: %1.").arg(m_cupsd.errorString());
        return false;
    }
    QString errors;
    if (!addQueue(queue(), &errors)) {
        m_why = QStringLiteral("lpadmin could not make the queue %1: %2").arg(queue(), errors.simplified());
        return false;
    }
    return true;
}

bool CupsScheduler::writeConfiguration()
{
    const QDir dir(m_dir.path());
    for (const char* sub : {"spool", "tmp", "cache", "state", "log", "root"})
        dir.mkpath(QLatin1String(sub));
    // Only the local socket, no sharing; anyone may add queues and print. Job control files are
    // written at once (DirtyCleanInterval 0), so jobCount() is current.
    const QByteArray cupsdConf = QStringLiteral("Listen %1\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
                                                "LogLevel info\nPreserveJobFiles Yes\nPreserveJobHistory Yes\n"
                                                "DirtyCleanInterval 0\n"
                                                "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                                "<Policy default>\n  JobPrivateAccess all\n  JobPrivateValues none\n"
                                                "  SubscriptionPrivateAccess all\n  SubscriptionPrivateValues none\n"
                                                "  <Limit All>\n    Order allow,deny\n    Allow all\n  </Limit>\n"
                                                "</Policy>\n")
                                     .arg(m_socket)
                                     .toUtf8();
    // cupsd refuses to run jobs as root; as anyone else it runs them as itself.
    const passwd* lp = ::geteuid() == 0 ? ::getpwnam("lp") : nullptr;
    if (::geteuid() == 0 && !lp) {
        m_why = QStringLiteral("There is no user lp for cupsd to run jobs as.");
        return false;
    }
    QByteArray filesConf = lp ? "User lp\nGroup lp\n" : "";
    // Its default system groups (lpadmin, sys, root) may not exist or not include the caller.
    if (const group* own = ::getgrgid(::getegid()))
        filesConf += QByteArray("SystemGroup ") + own->gr_name + '\n';
    // Printcap empty: the system's /run/cups/printcap is left alone.
    filesConf += QStringLiteral("ServerRoot %1/root\nRequestRoot %1/spool\nTempDir %1/tmp\nCacheDir %1/cache\n"
                                "StateDir %1/state\nErrorLog %1/log/error_log\nAccessLog %1/log/access_log\n"
                                "PageLog %1/log/page_log\nPrintcap\nFileDevice Yes\n")
                     .arg(dir.path())
                     .toUtf8();
    for (const auto& [name, contents] :
         {std::pair{"cupsd.conf", cupsdConf}, std::pair{"cups-files.conf", filesConf}}) {
        QFile file(dir.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
            m_why = QStringLiteral("Could not write %1: %2.").arg(file.fileName(), file.errorString());
            return false;
        }
    }
    if (lp) {
        // The jobs' user must reach the spool and the file: device's target.
        QDirIterator it(dir.path(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                        QDirIterator::Subdirectories);
        for (QString path = dir.path(); !path.isEmpty(); path = it.hasNext() ? it.next() : QString()) {
            if (::chown(QFile::encodeName(path).constData(), lp->pw_uid, lp->pw_gid) != 0) {
                m_why = QStringLiteral("Could not give %1 to the user lp: %2.")
                            .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
                return false;
            }
        }
        // The top folder of a QTemporaryDir is private to its owner.
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                              QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                              QFile::ExeOther);
    }
    return true;
}

std::optional<QByteArray> CupsScheduler::runTool(const QString& program, const QStringList& arguments,
                                                 QString* errors) const
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QLatin1String(serverVariable), m_socket);
    tool.setProcessEnvironment(environment);
    tool.start(findTool(program), arguments);
    const bool finished = tool.waitForStarted(5000) && tool.waitForFinished(10000);
    if (errors)
        *errors += QString::fromLocal8Bit(tool.readAllStandardError()) + (finished ? QString() : tool.errorString());
    if (!finished) {
        tool.kill();
        tool.waitForFinished(1000);
    }
    if (!finished || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        return std::nullopt;
    return tool.readAllStandardOutput();
}

QList<QByteArray> CupsScheduler::waitForJobDocuments(int count, int timeoutMs) const
{
    QElapsedTimer timer;
    timer.start();
    QList<int> ids;
    while (isRunning()) {
        // Lines like "Receipt-12  root  1024  Mon 23 Nov ...": the id follows the queue's name.
        ids.clear();
        const QStringList arguments{QStringLiteral("-W"), QStringLiteral("completed"), QStringLiteral("-o")};
        for (const QByteArray& line : runTool(QStringLiteral("lpstat"), arguments).value_or("").split('\n')) {
            const QByteArray job = line.simplified().split(' ').value(0);
            bool isNumber = false;
            const int id = job.mid(job.lastIndexOf('-') + 1).toInt(&isNumber);
            if (job.contains('-') && isNumber)
                ids << id;
        }
        if (ids.size() >= count || timer.hasExpired(timeoutMs))
            break;
        QThread::msleep(20);
    }
    std::sort(ids.begin(), ids.end());
    // The spooled file is what the scheduler was given; the file: device gets nothing from a raw
    // queue in CUPS 2.4.
    QList<QByteArray> documents;
    for (const int id : std::as_const(ids)) {
        QFile file(m_dir.filePath(QStringLiteral("spool/d%1-001").arg(id, 5, 10, QLatin1Char('0'))));
        documents << (file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return documents;
}

int CupsScheduler::jobCount() const
{
    static const QRegularExpression control(QStringLiteral("^c\\d{5,}$"));
    const QStringList files = QDir(m_dir.filePath(QStringLiteral("spool"))).entryList(QDir::Files);
    return int(std::count_if(files.begin(), files.end(),
                             [](const QString& name) { return control.match(name).hasMatch(); }));
}

bool CupsScheduler::removeQueue()
{
    return isRunning() && runTool(QStringLiteral("lpadmin"), {QStringLiteral("-x"), queue()}).has_value();
}

bool CupsScheduler::addQueue(const QString& name, QString* errors)
{
    const QString device = QUrl::fromLocalFile(m_dir.filePath(name.toLower() + QStringLiteral(".out"))).toString();
    return runTool(QStringLiteral("lpadmin"), {QStringLiteral("-p"), name, QStringLiteral("-v"), device,
                                               QStringLiteral("-E"), QStringLiteral("-m"), QStringLiteral("raw")},
                   errors)
        .has_value();
}
