#include "reports/reportexport.h"

#include "clock/clock.h"
#include "records/appsettings.h"
#include "support/printers.h"
#include "support/processoutput.h"

#include <QFile>
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

TEST(ReportExport, LongPdfTablesRunOnPagesThatRepeatTheHeaderAndCountThemselves)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.pdf"));
    QList<QStringList> rows;
    for (int index = 1; index <= 120; ++index)
        rows << QStringList{QStringLiteral("Row %1").arg(index), QStringLiteral("₵%1.00").arg(index)};
    ReportExportService::writePDF(QStringLiteral("Audit Log"), {QStringLiteral("Name"), QStringLiteral("Amount")},
                                  rows, heading(), path);
    const QString text = outputOf(QStringLiteral("pdftotext"), {path, QStringLiteral("-")})
                             .normalized(QString::NormalizationForm_KC);
    const int pages = int(text.count(QStringLiteral("Amount")));
    EXPECT_GE(pages, 2);
    EXPECT_TRUE(text.contains(QStringLiteral("Audit Log (continued)")));
    EXPECT_TRUE(text.contains(QStringLiteral("Page %1 of %1").arg(pages)));
    EXPECT_TRUE(text.contains(QStringLiteral("Row 120")));
}

} // namespace
