#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class AppSettings;

// The lines above an exported table: who it is for, what period, and when it was made.
struct ReportHeading {
    QString businessName;
    QString addressLine;
    QString phoneNumber;
    std::optional<QString> storeName;
    std::optional<QString> period;
    QDateTime generatedAt;

    // "Brindle" with no contact lines when there are no settings.
    static ReportHeading current(const AppSettings* settings, const std::optional<QString>& period,
                                 const std::optional<QString>& storeName);
    QString contactLine() const;
    QString generatedLine() const;
};

// A table of finished text to CSV or PDF: the exports add no formatting of their own. Each file is
// written whole or not at all; a failure throws FileWriteError (CSV) or ReceiptPrintError (PDF).
class ReportExportService {
public:
    static void writeCSV(const QString& title, const QStringList& headers, const QList<QStringList>& rows,
                         const std::optional<ReportHeading>& heading, const QString& path);
    static void writePDF(const QString& title, const QStringList& headers, const QList<QStringList>& rows,
                         const ReportHeading& heading, const QString& path);

    // The column widths a table asks for, and how they are fitted into a page's usable width.
    static QList<double> naturalWidths(const QStringList& headers, const QList<QStringList>& rows);
    static QList<double> fit(QList<double> widths, double usableWidth);
    static bool isNumericColumn(const QList<QStringList>& rows, int column);
};
