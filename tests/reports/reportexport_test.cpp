#include "reports/reportexport.h"

#include "clock/clock.h"
#include "receipts/receipthardwareerror.h"
#include "records/appsettings.h"
#include "support/printers.h"
#include "support/processoutput.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

ReportHeading heading()
{
    Clock::Override clock(QDateTime(QDate(2026, 3, 9), QTime(14, 5)));
    AppSettings settings;
    settings.setBusinessName(QStringLiteral("Adwoa's Provisions"));
    settings.setAddressLine(QStringLiteral("12 Ring Road"));
    return ReportHeading::current(&settings, QStringLiteral("Period: March 2, 2026 – March 9, 2026"),
                                  QStringLiteral("Osu Branch"));
}

TEST(ReportHeading, LinesLeaveOutWhatIsEmptyAndTheDefaultStore)
{
    ReportHeading line = heading();
    EXPECT_EQ(line.contactLine(), QStringLiteral("12 Ring Road"));
    EXPECT_TRUE(line.generatedLine().startsWith(QStringLiteral("Store: Osu Branch · Generated Mar 9, 2026 ")));
    line.storeName = QStringLiteral("Default Market");
    EXPECT_TRUE(line.generatedLine().startsWith(QStringLiteral("Generated ")));
    EXPECT_EQ(ReportHeading::current(nullptr, std::nullopt, std::nullopt).businessName, QStringLiteral("Brindle"));
}

TEST(ReportExport, CsvHasTheHeadingThenQuotesOnlyWhatNeedsIt)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.csv"));
    ReportExportService::writeCSV(QStringLiteral("Audit Log"), {QStringLiteral("Time"), QStringLiteral("Reason")},
                                  {{QStringLiteral("2026-03-09 14:05"), QStringLiteral("damaged, \"torn\" bag")},
                                   {QStringLiteral("2026-03-09 14:06"), QStringLiteral("two\nlines")}},
                                  heading(), path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_EQ(text.section(QLatin1Char('\n'), 0, 2),
              QStringLiteral("Adwoa's Provisions\nAudit Log\n\"Period: March 2, 2026 – March 9, 2026\""));
    EXPECT_TRUE(text.contains(QStringLiteral("\n\nTime,Reason\n2026-03-09 14:05,\"damaged, \"\"torn\"\" bag\"\n"
                                             "2026-03-09 14:06,\"two\nlines\"\n")))
        << text.toStdString();
}

TEST(ReportExport, ColumnsAreFittedToThePage)
{
    // Room to spare is shared equally.
    EXPECT_EQ(ReportExportService::fit({100, 200}, 400), (QList<double>{150, 250}));
    // Too wide: the widest gives way first, down to the next widest, never below 48.
    EXPECT_EQ(ReportExportService::fit({230, 100, 60}, 350), (QList<double>{190, 100, 60}));
    EXPECT_EQ(ReportExportService::fit({230, 230}, 300), (QList<double>{150, 150}));
    EXPECT_EQ(ReportExportService::fit({60, 60}, 50), (QList<double>{48, 48}));
}

TEST(ReportExport, NumbersAreRightAlignedWhenEveryJudgedCellIsOne)
{
    const QList<QStringList> rows{{QStringLiteral("Cash"), QStringLiteral("₵1,200.00"), QStringLiteral("—")},
                                  {QStringLiteral("Card"), QStringLiteral("(₵5.00)"), QString()},
                                  {QStringLiteral("Total"), QStringLiteral("all"), QString()}};
    EXPECT_FALSE(ReportExportService::isNumericColumn(rows, 0));
    // The closing Total row isn't judged; nor are dashes and empty cells.
    EXPECT_TRUE(ReportExportService::isNumericColumn(rows, 1));
    // Nothing to judge: left-aligned.
    EXPECT_FALSE(ReportExportService::isNumericColumn(rows, 2));
    EXPECT_FALSE(ReportExportService::isNumericColumn({{QStringLiteral("12 Ring Road, Accra")}}, 0));
}

struct PdfTable : ::testing::Test {
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("log.pdf"));

    QString info() { return outputOf(QStringLiteral("pdfinfo"), {path}); }
};

TEST_F(PdfTable, LongTablesRunOnPagesThatRepeatTheHeaderAndCountThemselves)
{
    QList<QStringList> rows;
    for (int index = 1; index <= 120; ++index)
        rows << QStringList{QStringLiteral("Row %1").arg(index), QStringLiteral("₵%1.00").arg(index)};
    ReportExportService::writePDF(QStringLiteral("Audit Log"), {QStringLiteral("Name"), QStringLiteral("Amount")},
                                  rows, heading(), path);
    const QString pages = info().section(QStringLiteral("Pages:"), 1).section(QLatin1Char('\n'), 0, 0).trimmed();
    ASSERT_GE(pages.toInt(), 2);
    EXPECT_TRUE(info().contains(QRegularExpression(QStringLiteral("Page size:\\s+612 x 792 pts"))));
    const QString text = outputOf(QStringLiteral("pdftotext"), {path, QStringLiteral("-")})
                             .normalized(QString::NormalizationForm_KC);
    EXPECT_EQ(text.count(QStringLiteral("Amount")), pages.toInt());
    EXPECT_TRUE(text.contains(QStringLiteral("Audit Log (continued)")));
    EXPECT_TRUE(text.contains(QStringLiteral("Page %1 of %1").arg(pages)));
    EXPECT_TRUE(text.contains(QStringLiteral("Row 120")));
}

TEST_F(PdfTable, AWideTableTurnsThePage)
{
    QStringList headers;
    QStringList cells;
    for (int column = 0; column < 9; ++column) {
        headers << QStringLiteral("H%1").arg(column);
        cells << QString(30, QLatin1Char('w'));
    }
    ReportExportService::writePDF(QStringLiteral("Wide"), headers, {cells}, heading(), path);
    EXPECT_TRUE(info().contains(QRegularExpression(QStringLiteral("Page size:\\s+792 x 612 pts"))));
    try {
        ReportExportService::writePDF(QStringLiteral("Wide"), headers, {cells}, heading(),
                                      folder.filePath(QStringLiteral("gone/log.pdf")));
        ADD_FAILURE() << "wrote into a folder that isn't there";
    } catch (const ReceiptPrintError& error) {
        EXPECT_EQ(error.description(), QStringLiteral("Could not create the PDF file."));
    }
}

} // namespace
