#include "receipts/cashdrawer.h"

#include "receipts/printerdirectory.h"
#include "receipts/rawprinttransport.h"
#include "receipts/receipthardwareerror.h"
#include "records/appsettings.h"
#include "support/printers.h"
#include "support/receiptdevices.h"
#include "support/refusalof.h"

#include <QDir>
#include <QFile>
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

    QString refusal() { return refusalOf([&] { drawer.openDrawer(); }); }
};

TEST_F(CashDrawerTest, EachMissingPieceIsNamedAndAnythingButARealConnectionIsSimulated)
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

    for (const char* raw : {"simulated", "usb", ""}) {
        settings->setCashDrawerConnectionRaw(QString::fromLatin1(raw));
        EXPECT_EQ(refusal(), QString()) << raw;
    }
    EXPECT_TRUE(transport.sent.isEmpty());
    EXPECT_TRUE(drawer.simulated().lastOpenedAt());
    EXPECT_TRUE(drawer.lastOpenedAt());
}

// Stands in for lp: says and exits as told.
struct SpoolerScript : ::testing::Test {
    QTemporaryDir folder;
    QString script = folder.filePath(QStringLiteral("lp"));
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
        file.write(QStringLiteral("#!/bin/sh\nprintf '%1' >&2\nexit %2\n").arg(stderrText).arg(status).toUtf8());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return CUPSRawPrintTransport(script);
    }

    QString refusal(CUPSRawPrintTransport transport)
    {
        return refusalOf([&] { transport.send(QByteArray::fromHex("1B700019FA"), QStringLiteral("Receipt")); });
    }

    // Files the transport left in the temporary folder.
    static QStringList leftOver()
    {
        return QDir(QDir::tempPath()).entryList({QStringLiteral("tallyrun-raw-*.bin")}, QDir::Files);
    }
};

TEST_F(SpoolerScript, TheSpoolersOwnWordsOrItsStatusBecomeTheMessageAndNoFileIsLeft)
{
    EXPECT_EQ(refusal(spooler(QString(), 0)), QString());
    EXPECT_EQ(refusal(spooler(QStringLiteral("lp: The printer or class does not exist.\\n"), 1)),
              QStringLiteral("The printer didn't accept the command: lp: The printer or class does not exist."));
    EXPECT_EQ(refusal(spooler(QString(), 1)), QStringLiteral("The printer didn't accept the command: lp exited with status 1"));
    EXPECT_EQ(refusal(spooler(QStringLiteral("  \\n"), 3)), QStringLiteral("The printer didn't accept the command: lp exited with status 3"));
    const QString missing = refusal(CUPSRawPrintTransport(folder.filePath(QStringLiteral("no-such-lp"))));
    EXPECT_TRUE(missing.startsWith(QStringLiteral("The printer didn't accept the command: "))) << missing.toStdString();
    EXPECT_TRUE(leftOver().isEmpty());
}

} // namespace
