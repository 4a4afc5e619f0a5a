#include "support/cupsscheduler.h"
#include "support/printers.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <memory>

namespace {

// QPrinter needs a QGuiApplication; this executable's main belongs to the receipts tests, so the
// application is made here unless someone made one already.
class GuiApplication : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (QCoreApplication::instance())
            return;
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "receipts_tests";
        static char* argv[] = {name, nullptr};
        m_application = std::make_unique<QGuiApplication>(argc, argv);
    }
    void TearDown() override { m_application.reset(); }

private:
    std::unique_ptr<QGuiApplication> m_application;
};
[[maybe_unused]] ::testing::Environment* const guiApplication =
    ::testing::AddGlobalTestEnvironment(new GuiApplication);

struct LpResult {
    int exitCode = -1;
    QByteArray errors;
};

// The cash drawer's way: /usr/bin/lp with this process's environment, as the program starts it.
LpResult lp(const QString& queue, const QByteArray& bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        return {};
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("/usr/bin/lp"),
                  {QStringLiteral("-d"), queue, QStringLiteral("-o"), QStringLiteral("raw"),
                   QStringLiteral("-t"), QStringLiteral("Brindle"), file.fileName()});
    if (!process.waitForFinished(10000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardError()};
}

QString pdfText(const QByteArray& pdf)
{
    QTemporaryFile file;
    if (!file.open() || file.write(pdf) != pdf.size() || !file.flush())
        return {};
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {file.fileName(), QStringLiteral("-")});
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

const QByteArray drawerKick("\x1b\x70\x00\x19\xfa", 5);

class CupsSchedulerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!scheduler.isRunning())
            GTEST_SKIP() << scheduler.whyNotRunning().toStdString();
    }

    CupsScheduler scheduler;
};

TEST_F(CupsSchedulerTest, RawBytesFromLpArriveExactly)
{
    EXPECT_EQ(scheduler.jobCount(), 0);
    const LpResult result = lp(scheduler.queue(), drawerKick);
    ASSERT_EQ(result.exitCode, 0) << result.errors.toStdString();

    const QList<QByteArray> documents = scheduler.waitForJobDocuments(1);
    ASSERT_EQ(documents.size(), 1);
    EXPECT_EQ(documents.first().toHex(' '), drawerKick.toHex(' '));
    EXPECT_EQ(scheduler.jobCount(), 1);
}

TEST_F(CupsSchedulerTest, JobsOfTwoQueuesComeBackOldestFirst)
{
    ASSERT_TRUE(scheduler.addQueue(QStringLiteral("Kitchen")));
    ASSERT_EQ(lp(scheduler.queue(), "first").exitCode, 0);
    ASSERT_EQ(lp(QStringLiteral("Kitchen"), "second").exitCode, 0);
    ASSERT_EQ(lp(scheduler.queue(), "third").exitCode, 0);

    EXPECT_EQ(scheduler.waitForJobDocuments(3), (QList<QByteArray>{"first", "second", "third"}));
}

TEST_F(CupsSchedulerTest, WaitingForMoreJobsThanCameGivesBackWhatCame)
{
    ASSERT_EQ(lp(scheduler.queue(), drawerKick).exitCode, 0);

    EXPECT_EQ(scheduler.waitForJobDocuments(2, 500), QList<QByteArray>{drawerKick});
}

TEST_F(CupsSchedulerTest, QtPrintsToTheQueueAsPdf)
{
    EXPECT_TRUE(QPrinterInfo::availablePrinterNames().contains(scheduler.queue()))
        << QPrinterInfo::availablePrinterNames().join(u',').toStdString();

    QPrinter printer;
    printer.setPrinterName(scheduler.queue());
    ASSERT_EQ(printer.printerName(), scheduler.queue());
    {
        QPainter painter;
        ASSERT_TRUE(painter.begin(&printer));
        painter.drawText(QPointF(20, 40), QStringLiteral("Thank you for shopping"));
        ASSERT_TRUE(painter.end());
    }

    const QList<QByteArray> documents = scheduler.waitForJobDocuments(1);
    ASSERT_EQ(documents.size(), 1);
    EXPECT_TRUE(documents.first().startsWith("%PDF-")) << documents.first().left(40).toStdString();
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        GTEST_SKIP() << "pdftotext is missing; install the package poppler-utils.";
    EXPECT_EQ(pdfText(documents.first()).simplified(), QStringLiteral("Thank you for shopping"));
}

TEST_F(CupsSchedulerTest, AVanishedQueueRefusesLpAndQt)
{
    ASSERT_TRUE(QPrinterInfo::availablePrinterNames().contains(scheduler.queue()));
    ASSERT_TRUE(scheduler.removeQueue());

    const LpResult result = lp(scheduler.queue(), drawerKick);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.errors.contains("does not exist")) << result.errors.toStdString();
    EXPECT_FALSE(QPrinterInfo::availablePrinterNames().contains(scheduler.queue()));
    // Qt would quietly print elsewhere; the caller sees it only by asking back.
    QPrinter printer;
    printer.setPrinterName(scheduler.queue());
    EXPECT_NE(printer.printerName(), scheduler.queue());
    EXPECT_EQ(scheduler.jobCount(), 0);
}

// Whether any process runs with `text` in its command line.
bool anyProcessMentions(const QString& text)
{
    const QStringList pids = QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString& pid : pids) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(QFile::encodeName(text)))
            return true;
    }
    return false;
}

// Each test starts its own scheduler, so Qt must follow CUPS_SERVER from one to the next, and an
// ended one must leave no daemon, folder or variable behind.
TEST(CupsSchedulerLifetime, ASecondSchedulerReplacesTheFirstCompletely)
{
    struct Unset {
        ~Unset() { qunsetenv("CUPS_SERVER"); }
    } unset;
    const QByteArray outer = "/nonexistent/outer.sock";
    qputenv("CUPS_SERVER", outer);
    QString firstFolder;
    {
        CupsScheduler first;
        if (!first.isRunning())
            GTEST_SKIP() << first.whyNotRunning().toStdString();
        firstFolder = QFileInfo(first.server()).path();
        EXPECT_EQ(qgetenv("CUPS_SERVER"), QFile::encodeName(first.server()));
        ASSERT_TRUE(first.addQueue(QStringLiteral("OnlyInFirst")));
        EXPECT_TRUE(QPrinterInfo::availablePrinterNames().contains(QStringLiteral("OnlyInFirst")));
        EXPECT_TRUE(anyProcessMentions(firstFolder));
    }
    EXPECT_EQ(qgetenv("CUPS_SERVER"), outer);
    EXPECT_FALSE(QFileInfo::exists(firstFolder));
    EXPECT_FALSE(anyProcessMentions(firstFolder));

    CupsScheduler second;
    ASSERT_TRUE(second.isRunning()) << second.whyNotRunning().toStdString();
    const QStringList names = QPrinterInfo::availablePrinterNames();
    EXPECT_TRUE(names.contains(second.queue())) << names.join(u',').toStdString();
    EXPECT_FALSE(names.contains(QStringLiteral("OnlyInFirst")));
}

} // namespace
