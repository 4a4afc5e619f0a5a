#include "receipts/receiptsettingsmodel.h"

#include "receipts/logoimage.h"
#include "receipts/receipthardwareerror.h"
#include "receiptscene.h"
#include "support/receiptdevices.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

struct ReceiptSettingsTest : ReceiptScene {
    ListedPrinters directory;
    RecordedReceiptPrinter printer;
    RecordedDrawer drawer;
    std::unique_ptr<ReceiptSettingsModel> model;

    ReceiptSettingsTest()
    {
        directory.printers = {{QStringLiteral("Kitchen"), QStringLiteral("Brother HL")},
                              {QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
        model = std::make_unique<ReceiptSettingsModel>(context, settings, directory, printer, drawer);
    }

    QStringList choiceLabels() const
    {
        QStringList labels;
        for (const ReceiptSettingsModel::PrinterChoice& choice : model->printerChoices())
            labels << choice.label;
        return labels;
    }
};

// That the choice is saved, the fault loop pins.
TEST_F(ReceiptSettingsTest, AChosenPrinterIsKeptByQueueAndAGoneOneStaysChosenWithAWarning)
{
    EXPECT_EQ(choiceLabels(), (QStringList{"Ask each time (print dialog)", "Brother HL", "Epson TM-T20"}));
    model->choosePrinter(model->printerChoices()[2].printer);
    EXPECT_EQ(settings->receiptPrinterQueue() + u'/' + settings->receiptPrinterName(),
              QStringLiteral("Receipt/Epson TM-T20"));
    EXPECT_EQ(model->chosenPrinterIndex(), 2);
    EXPECT_FALSE(model->isChosenPrinterMissing());

    directory.printers.removeLast();
    model->refreshPrinters();
    EXPECT_TRUE(model->isChosenPrinterMissing());
    EXPECT_EQ(choiceLabels().last(), QStringLiteral("Epson TM-T20 — not connected"));
    EXPECT_EQ(model->chosenPrinterIndex(), 2);

    model->choosePrinter(std::nullopt);
    EXPECT_EQ(settings->receiptPrinterQueue(), QString());
    EXPECT_FALSE(model->isChosenPrinterMissing());
}

TEST_F(ReceiptSettingsTest, TestPrintGoesToTheChosenPrinterOrTheDialog)
{
    model->testPrint(QStringLiteral("Ama Mensah"));
    EXPECT_EQ(model->printerTestMessage(), QStringLiteral("Choose a printer in the dialog to test it."));
    model->choosePrinter(InstalledPrinter{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")});
    model->testPrint(QStringLiteral("Ama Mensah"));
    EXPECT_EQ(model->printerTestMessage(), QStringLiteral("Test receipt sent to Epson TM-T20."));

    ASSERT_EQ(printer.printed.size(), 2);
    EXPECT_FALSE(printer.printed[0].printer);
    EXPECT_EQ(printer.printed[1].printer->queue, QStringLiteral("Receipt"));
    const ReceiptData& test = printer.printed[1].receipt;
    EXPECT_EQ(test.businessName + u'/' + test.cashierName, QStringLiteral("TEST PRINT/Ama Mensah"));
    EXPECT_EQ(test.lines.size(), 1);
}

TEST_F(ReceiptSettingsTest, ALogoIsStoredNormalizedAndABadFileKeepsThePreviousOne)
{
    QTemporaryDir folder;
    const QString photo = folder.filePath(QStringLiteral("shop.jpg"));
    QImage large(2400, 1200, QImage::Format_RGB32);
    large.fill(Qt::darkRed);
    ASSERT_TRUE(large.save(photo, "JPEG"));
    model->chooseLogo(photo);
    EXPECT_EQ(LogoImage::pngSize(settings->logoPNG()), QSize(600, 300));
    EXPECT_FALSE(model->errorMessage());

    model->chooseLogo(folder.filePath(QStringLiteral("missing.png")));
    EXPECT_EQ(model->errorMessage(), LogoImageError().description());
    EXPECT_EQ(LogoImage::pngSize(settings->logoPNG()), QSize(600, 300));
    model->removeLogo();
    EXPECT_FALSE(settings->hasLogo());
    EXPECT_FALSE(model->errorMessage());
}

} // namespace
