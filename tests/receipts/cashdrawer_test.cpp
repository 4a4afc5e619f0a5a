#include "receipts/cashdrawer.h"

#include "receipts/printerdirectory.h"
#include "receipts/rawprinttransport.h"
#include "receipts/receipthardwareerror.h"
#include "records/appsettings.h"
#include "support/printers.h"
#include "support/receiptdevices.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct CashDrawerTest : ::testing::Test {
    Ref<AppSettings> settings = std::make_shared<AppSettings>();
    ListedPrinters directory;
    RecordedTransport transport;
    ConfigurableCashDrawer drawer{[this] { return settings; }, directory, transport};

    CashDrawerTest()
    {
        settings->setCashDrawerConnectionRaw(QStringLiteral("receiptPrinter"));
        settings->setReceiptPrinterQueue(QStringLiteral("Receipt"));
        directory.printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
    }

    QString refusal()
    {
        try {
            drawer.openDrawer();
        } catch (const Refusal& refusal) {
            return refusal.description();
        }
        return {};
    }
};

TEST_F(CashDrawerTest, KicksThroughThePrintersQueueWithThePinsByte)
{
    drawer.openDrawer();
    settings->setCashDrawerPinRaw(QStringLiteral("pin5"));
    drawer.openDrawer();
    // An unknown pin is the one most drawers use.
    settings->setCashDrawerPinRaw(QStringLiteral("pin9"));
    drawer.openDrawer();
    using Sent = std::pair<QByteArray, QString>;
    const QString queue = QStringLiteral("Receipt");
    EXPECT_EQ(transport.sent, (QList<Sent>{{QByteArray::fromHex("1B700019FA"), queue},
                                           {QByteArray::fromHex("1B700119FA"), queue},
                                           {QByteArray::fromHex("1B700019FA"), queue}}));
    EXPECT_TRUE(drawer.lastOpenedAt());
}

TEST_F(CashDrawerTest, AnythingButARealConnectionIsSimulatedAndSendsNothing)
{
    for (const char* raw : {"simulated", "usb", ""}) {
        settings->setCashDrawerConnectionRaw(QString::fromLatin1(raw));
        EXPECT_EQ(refusal(), QString()) << raw;
    }
    EXPECT_TRUE(transport.sent.isEmpty());
    EXPECT_TRUE(drawer.simulated().lastOpenedAt());
    EXPECT_TRUE(drawer.lastOpenedAt());
}

TEST_F(CashDrawerTest, EachMissingPieceIsNamedAndNothingIsSent)
{
    settings->setCashDrawerEnabled(false);
    EXPECT_EQ(refusal(), QStringLiteral("No cash drawer is configured. Check Settings."));
    settings->setCashDrawerEnabled(true);

    settings->setReceiptPrinterQueue(QString());
    EXPECT_EQ(refusal(), QStringLiteral("Choose your receipt printer in Settings > Receipt first — the cash drawer "
                                        "opens through it."));
    settings->setReceiptPrinterQueue(QStringLiteral("Receipt"));

    // Unplugged: said so now, instead of a kick waiting in the queue to fire later.
    directory.printers.clear();
    EXPECT_EQ(refusal(), QStringLiteral("The receipt printer \"Receipt\" isn't connected to this computer. Check "
                                        "it's switched on and plugged in, or choose it again in Settings > Receipt."));
    EXPECT_TRUE(transport.sent.isEmpty());
    EXPECT_FALSE(drawer.lastOpenedAt());

    ConfigurableCashDrawer withoutSettings([] { return Ref<AppSettings>(); }, directory, transport);
    EXPECT_THROW(withoutSettings.openDrawer(), CashDrawerError);

    // A spooler failure passes up, and the drawer counts as not opened.
    directory.printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
    transport.failure = ReceiptHardwareError::sendFailed(QStringLiteral("lp: Printer not ready"));
    EXPECT_EQ(refusal(), QStringLiteral("The printer didn't accept the command: lp: Printer not ready"));
    EXPECT_FALSE(drawer.lastOpenedAt());
}

// Stands in for lp: writes what it was given where the test can read it, then says and exits as told.
struct SpoolerScript : ::testing::Test {
    QTemporaryDir folder;
    QString script = folder.filePath(QStringLiteral("lp"));
    QString argumentsFile = folder.filePath(QStringLiteral("arguments"));
    QString copyFile = folder.filePath(QStringLiteral("copy"));
    // A temporary folder of the test's own, so that another test's kick in flight isn't taken for
    // a file this one left behind.
    QTemporaryDir temporary;
    QByteArray previousTemporary = qgetenv("TMPDIR");

    SpoolerScript() { qputenv("TMPDIR", temporary.path().toUtf8()); }
    ~SpoolerScript() override
    {
        if (previousTemporary.isEmpty())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", previousTemporary);
    }

    CUPSRawPrintTransport spooler(const QString& stderrText, int status)
    {
        QFile file(script);
        file.open(QIODevice::WriteOnly);
        file.write(QStringLiteral("#!/bin/sh\n"
                                  "printf '%s\\n' \"$@\" > '%1'\n"
                                  "eval last=\\${$#}\n"
                                  "cp \"$last\" '%2'\n"
                                  "printf '%3' >&2\n"
                                  "exit %4\n")
                       .arg(argumentsFile, copyFile, stderrText)
                       .arg(status)
                       .toUtf8());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return CUPSRawPrintTransport(script);
    }

    QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString refusal(CUPSRawPrintTransport transport)
    {
        try {
            transport.send(QByteArray::fromHex("1B700019FA"), QStringLiteral("Receipt"));
        } catch (const ReceiptHardwareError& error) {
            return error.description();
        }
        return {};
    }

    // Files the transport left in the temporary folder.
    static QStringList leftOver()
    {
        return QDir(QDir::tempPath()).entryList({QStringLiteral("tallyrun-raw-*.bin")}, QDir::Files);
    }
};

TEST_F(SpoolerScript, SendsTheBytesAsARawJobWithExactlySevenArguments)
{
    EXPECT_EQ(refusal(spooler(QString(), 0)), QString());
    const QStringList given = QString::fromUtf8(contents(argumentsFile)).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(given.size(), 7);
    EXPECT_EQ(given.mid(0, 6), (QStringList{"-d", "Receipt", "-o", "raw", "-t", "Brindle"}));
    EXPECT_TRUE(given[6].contains(QRegularExpression(
        QStringLiteral("/tallyrun-raw-[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.bin$"))));
    EXPECT_EQ(contents(copyFile), QByteArray::fromHex("1B700019FA"));
    EXPECT_FALSE(QFile::exists(given[6]));
}

TEST_F(SpoolerScript, TheSpoolersOwnWordsOrItsStatusBecomeTheMessageAndNoFileIsLeft)
{
    EXPECT_EQ(refusal(spooler(QStringLiteral("lp: The printer or class does not exist.\\n"), 1)),
              QStringLiteral("The printer didn't accept the command: lp: The printer or class does not exist."));
    EXPECT_EQ(refusal(spooler(QString(), 1)), QStringLiteral("The printer didn't accept the command: lp exited with status 1"));
    EXPECT_EQ(refusal(spooler(QStringLiteral("  \\n"), 3)), QStringLiteral("The printer didn't accept the command: lp exited with status 3"));
    const QString missing = refusal(CUPSRawPrintTransport(folder.filePath(QStringLiteral("no-such-lp"))));
    EXPECT_TRUE(missing.startsWith(QStringLiteral("The printer didn't accept the command: "))) << missing.toStdString();
    EXPECT_TRUE(leftOver().isEmpty());
}

} // namespace
