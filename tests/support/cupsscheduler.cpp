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
    if (!onPath.isEmpty())
        return onPath;
    return QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")});
}

// The socket's path must fit sockaddr_un, so a long TMPDIR gives way to /tmp.
QString folderTemplate()
{
    const QString name = QStringLiteral("/tallyrun-cups-XXXXXX");
    QString root = QDir::tempPath();
    if (root.size() + name.size() + 16 > int(sizeof(sockaddr_un::sun_path)))
        root = QStringLiteral("/tmp");
    return root + name;
}

// Qt's print support goes through libcups, which reads CUPS_SERVER once per thread and then
// keeps that server and its connection. Without this, a second scheduler in the same test
// executable would be invisible to Qt.
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
    if (path.size() >= int(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), path.size());
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return false;
    const bool connected = ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    ::close(fd);
    return connected;
}

} // namespace

CupsScheduler::CupsScheduler()
    : m_dir(folderTemplate())
{
    if (!start()) {
        if (m_cupsd.state() != QProcess::NotRunning) {
            m_cupsd.kill();
            m_cupsd.waitForFinished(3000);
        }
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
    if (m_cupsd.state() != QProcess::NotRunning) {
        m_cupsd.terminate();
        if (!m_cupsd.waitForFinished(3000)) {
            m_cupsd.kill();
            m_cupsd.waitForFinished(3000);
        }
    }
}

bool CupsScheduler::start()
{
    const QString cupsd = findTool(QStringLiteral("cupsd"));
    if (cupsd.isEmpty()) {
        m_why = QStringLiteral("cupsd was not found; install the package cups.");
        return false;
    }
    for (const QString& tool : {QStringLiteral("lpadmin"), QStringLiteral("lp"), QStringLiteral("lpstat")}) {
        if (findTool(tool).isEmpty()) {
            m_why = QStringLiteral("%1 was not found; install the package cups-client.").arg(tool);
            return false;
        }
    }
    if (!m_dir.isValid()) {
        m_why = QStringLiteral("No folder for the scheduler: %1.").arg(m_dir.errorString());
        return false;
    }
    m_socket = m_dir.filePath(QStringLiteral("cups.sock"));

    // cupsd refuses to run jobs as root; as anyone else it runs them as itself.
    const bool asRoot = ::geteuid() == 0;
    if (!writeConfiguration(asRoot))
        return false;

    m_cupsd.setProgram(cupsd);
    m_cupsd.setArguments({QStringLiteral("-f"), QStringLiteral("-c"),
                          m_dir.filePath(QStringLiteral("cupsd.conf")), QStringLiteral("-s"),
                          m_dir.filePath(QStringLiteral("cups-files.conf"))});
    // Errors before its log is open go to standard error.
    m_cupsd.setProcessChannelMode(QProcess::MergedChannels);
    m_cupsd.setStandardOutputFile(m_dir.filePath(QStringLiteral("cupsd.out")));
    // A test that crashes or is killed takes its scheduler with it.
    m_cupsd.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_cupsd.start();
    if (!m_cupsd.waitForStarted(5000)) {
        m_why = QStringLiteral("cupsd could not be started: %1.").arg(m_cupsd.errorString());
        return false;
    }
    if (!waitUntilListening(5000))
        return false;

    QString errors;
    if (!addRawQueue(queue(), &errors)) {
        m_why = QStringLiteral("lpadmin could not make the queue %1: %2 %3")
                    .arg(queue(), errors.simplified(), errorLogTail());
        return false;
    }
    return true;
}

bool CupsScheduler::addRawQueue(const QString& name, QString* errors) const
{
    const QString device =
        QUrl::fromLocalFile(m_dir.filePath(name.toLower() + QStringLiteral(".out"))).toString();
    return runTool(QStringLiteral("lpadmin"),
                   {QStringLiteral("-p"), name, QStringLiteral("-v"), device, QStringLiteral("-E"),
                    QStringLiteral("-m"), QStringLiteral("raw")},
                   errors)
        .has_value();
}

bool CupsScheduler::writeConfiguration(bool asRoot)
{
    const QDir dir(m_dir.path());
    for (const char* sub : {"spool", "tmp", "cache", "state", "log", "root"}) {
        if (!dir.mkpath(QLatin1String(sub))) {
            m_why = QStringLiteral("Could not make the scheduler's folder %1.")
                        .arg(dir.filePath(QLatin1String(sub)));
            return false;
        }
    }

    // Only the local socket, no sharing or discovery; anyone may add queues and print.
    const QByteArray cupsdConf = QStringLiteral("Listen %1\n"
                                                "Browsing No\n"
                                                "WebInterface No\n"
                                                "DefaultAuthType None\n"
                                                "LogLevel info\n"
                                                "PreserveJobFiles Yes\n"
                                                "PreserveJobHistory Yes\n"
                                                // Job control files at once, so jobCount() is current.
                                                "DirtyCleanInterval 0\n"
                                                "<Location />\n"
                                                "  Order allow,deny\n"
                                                "  Allow all\n"
                                                "</Location>\n"
                                                "<Policy default>\n"
                                                "  JobPrivateAccess all\n"
                                                "  JobPrivateValues none\n"
                                                "  SubscriptionPrivateAccess all\n"
                                                "  SubscriptionPrivateValues none\n"
                                                "  <Limit All>\n"
                                                "    Order allow,deny\n"
                                                "    Allow all\n"
                                                "  </Limit>\n"
                                                "</Policy>\n")
                                     .arg(m_socket)
                                     .toUtf8();

    uid_t lpUser = 0;
    gid_t lpGroup = 0;
    QByteArray filesConf;
    if (asRoot) {
        const passwd* lp = ::getpwnam("lp");
        if (!lp) {
            m_why = QStringLiteral("There is no user lp for cupsd to run jobs as.");
            return false;
        }
        lpUser = lp->pw_uid;
        lpGroup = lp->pw_gid;
        filesConf += "User lp\nGroup lp\n";
    }
    // Its default system groups (lpadmin, sys, root) may not exist or not include the caller.
    if (const group* own = ::getgrgid(::getegid()))
        filesConf += QByteArray("SystemGroup ") + own->gr_name + '\n';
    // Printcap empty: the system's /run/cups/printcap is left alone.
    filesConf += QStringLiteral("ServerRoot %1\n"
                                "RequestRoot %2\n"
                                "TempDir %3\n"
                                "CacheDir %4\n"
                                "StateDir %5\n"
                                "ErrorLog %6/error_log\n"
                                "AccessLog %6/access_log\n"
                                "PageLog %6/page_log\n"
                                "Printcap\n"
                                "FileDevice Yes\n")
                     .arg(dir.filePath(QStringLiteral("root")), spoolPath(),
                          dir.filePath(QStringLiteral("tmp")), dir.filePath(QStringLiteral("cache")),
                          dir.filePath(QStringLiteral("state")), dir.filePath(QStringLiteral("log")))
                     .toUtf8();

    for (const auto& [name, contents] :
         {std::pair{"cupsd.conf", cupsdConf}, std::pair{"cups-files.conf", filesConf}}) {
        QFile file(dir.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
            m_why = QStringLiteral("Could not write %1: %2.").arg(file.fileName(), file.errorString());
            return false;
        }
    }

    if (asRoot) {
        // The jobs' user must reach the spool and the file: device's target.
        QStringList paths{m_dir.path()};
        QDirIterator it(m_dir.path(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            paths << it.next();
        for (const QString& path : paths) {
            if (::chown(QFile::encodeName(path).constData(), lpUser, lpGroup) != 0) {
                m_why = QStringLiteral("Could not give %1 to the user lp: %2.")
                            .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
                return false;
            }
        }
        // The top folder of a QTemporaryDir is private to its owner.
        QFile::setPermissions(m_dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                                QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                                QFile::ExeOther);
    }
    return true;
}

bool CupsScheduler::waitUntilListening(int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!canConnect(m_socket)) {
        if (m_cupsd.waitForFinished(10)) {
            m_why = QStringLiteral("cupsd stopped while starting (exit code %1): %2")
                        .arg(m_cupsd.exitCode())
                        .arg(errorLogTail());
            return false;
        }
        if (timer.hasExpired(timeoutMs)) {
            m_why = QStringLiteral("cupsd did not accept connections within %1 ms: %2")
                        .arg(timeoutMs)
                        .arg(errorLogTail());
            return false;
        }
    }
    return true;
}

QString CupsScheduler::errorLogTail() const
{
    QStringList lines;
    for (const char* name : {"cupsd.out", "log/error_log"}) {
        QFile file(m_dir.filePath(QLatin1String(name)));
        if (file.open(QIODevice::ReadOnly))
            lines += QString::fromLocal8Bit(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }
    if (lines.isEmpty())
        return QStringLiteral("its log is empty.");
    return QStringLiteral("its log ends with \"%1\".")
        .arg(lines.mid(std::max(0, int(lines.size()) - 3)).join(u' '));
}

QString CupsScheduler::spoolPath() const
{
    return m_dir.filePath(QStringLiteral("spool"));
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
        *errors += QString::fromLocal8Bit(tool.readAllStandardError());
    if (!finished) {
        if (errors)
            *errors += QStringLiteral("%1 did not finish: %2").arg(program, tool.errorString());
        tool.kill();
        tool.waitForFinished(1000);
        return std::nullopt;
    }
    if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        return std::nullopt;
    return tool.readAllStandardOutput();
}

QList<int> CupsScheduler::doneJobIds() const
{
    // Lines like "Receipt-12  root  1024  Mon 23 Nov ...": the id follows the queue's name.
    QList<int> ids;
    const std::optional<QByteArray> listing = runTool(
        QStringLiteral("lpstat"), {QStringLiteral("-W"), QStringLiteral("completed"), QStringLiteral("-o")});
    if (!listing)
        return ids;
    for (const QByteArray& line : listing->split('\n')) {
        const QByteArray job = line.simplified().split(' ').value(0);
        bool isNumber = false;
        const int id = job.mid(job.lastIndexOf('-') + 1).toInt(&isNumber);
        if (job.contains('-') && isNumber)
            ids << id;
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

QList<QByteArray> CupsScheduler::waitForJobDocuments(int count, int timeoutMs) const
{
    QList<QByteArray> documents;
    if (!isRunning())
        return documents;
    QElapsedTimer timer;
    timer.start();
    QList<int> ids = doneJobIds();
    while (ids.size() < count && !timer.hasExpired(timeoutMs)) {
        QThread::msleep(20);
        ids = doneJobIds();
    }
    // The spooled file is what the scheduler was given; the file: device gets nothing from a
    // raw queue in CUPS 2.4.
    for (const int id : std::as_const(ids)) {
        QFile file(QDir(spoolPath()).filePath(QStringLiteral("d%1-001").arg(id, 5, 10, QLatin1Char('0'))));
        documents << (file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return documents;
}

int CupsScheduler::jobCount() const
{
    static const QRegularExpression control(QStringLiteral("^c\\d{5,}$"));
    const QStringList files = QDir(spoolPath()).entryList(QDir::Files);
    return int(std::count_if(files.begin(), files.end(),
                             [](const QString& name) { return control.match(name).hasMatch(); }));
}

bool CupsScheduler::removeQueue()
{
    return isRunning() && runTool(QStringLiteral("lpadmin"), {QStringLiteral("-x"), queue()}).has_value();
}

bool CupsScheduler::addQueue(const QString& name)
{
    return isRunning() && addRawQueue(name);
}
