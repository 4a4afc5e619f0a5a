#include "reports/reportexport.h"

#include "clock/clock.h"
#include "receipts/pointtext.h"
#include "receipts/receipthardwareerror.h"
#include "records/appsettings.h"
#include "reports/csvtext.h"
#include "reports/wholefile.h"

#include <QLocale>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace {

constexpr double margin = 36;
constexpr double portraitWidth = 612;
constexpr double portraitHeight = 792;
constexpr double widestNatural = 230;
constexpr double narrowestFitted = 48;
constexpr double cellPadding = 3;
constexpr double footHeight = 16;
const QColor muted(0x5f, 0x6b, 0x7a);
const QColor hairline(0xb0, 0xb5, 0xbb);

const QFont& headerFont()
{
    return PointText::systemFont(9.5, true);
}

const QFont& bodyFont()
{
    return PointText::systemFont(9.5, false);
}

bool isTotalRow(const QStringList& row)
{
    return !row.isEmpty() && row.first() == QLatin1String("Total");
}

bool passesAsNumber(const QString& cell)
{
    static const QString leading = QStringLiteral("-−₵$€£(");
    const QChar first = cell.front();
    if (!first.isDigit() && !leading.contains(first))
        return false;
    return std::count_if(cell.begin(), cell.end(), [](QChar c) { return c.isLetter(); }) <= 3;
}

// One line of the heading block: its text, font and colour.
struct HeadingLine {
    QString text;
    QFont font;
    QColor colour;
};

QList<HeadingLine> headingLines(const QString& title, const ReportHeading& heading)
{
    QList<HeadingLine> lines{{heading.businessName, PointText::systemFont(12, true), Qt::black}};
    if (!heading.contactLine().isEmpty())
        lines.append({heading.contactLine(), PointText::systemFont(9, false), muted});
    lines.append({title, PointText::systemFont(17, true), Qt::black});
    if (heading.period)
        lines.append({*heading.period, PointText::systemFont(10.5, false), Qt::black});
    lines.append({heading.generatedLine(), PointText::systemFont(9, false), muted});
    return lines;
}

// The table laid out on pages: which rows each page holds, measured once and drawn from that.
struct TableLayout {
    QList<double> widths;
    QList<bool> numeric;
    QSizeF page;
    QList<QList<int>> pages; // row indexes

    double usableWidth() const { return page.width() - 2 * margin; }
};

double rowHeight(const QStringList& cells, const QList<double>& widths, const QFont& font)
{
    double tallest = 0;
    for (qsizetype column = 0; column < widths.size(); ++column) {
        const QString cell = cells.value(column);
        tallest = std::max(tallest, PointText::wrapped(cell, font, widths[column] - 2 * cellPadding, Qt::AlignLeft).height);
    }
    return std::ceil(tallest) + 2 * cellPadding;
}

double drawRow(QPainter& painter, const QStringList& cells, const TableLayout& table, const QFont& font, double y)
{
    const double height = rowHeight(cells, table.widths, font);
    double x = margin;
    for (qsizetype column = 0; column < table.widths.size(); ++column) {
        const double width = table.widths[column];
        const PointText::Block block = PointText::wrapped(cells.value(column), font, width - 2 * cellPadding,
                                                          table.numeric[column] ? Qt::AlignRight : Qt::AlignLeft);
        block.layout->draw(&painter, QPointF(x + cellPadding, y + cellPadding));
        x += width;
    }
    return height;
}

void drawRule(QPainter& painter, const TableLayout& table, double y)
{
    painter.save();
    painter.setPen(QPen(hairline, 0.5));
    painter.drawLine(QPointF(margin, y), QPointF(margin + table.usableWidth(), y));
    painter.restore();
}

double drawLine(QPainter& painter, const HeadingLine& line, double width, double y)
{
    painter.setPen(line.colour);
    const PointText::Block block = PointText::wrapped(line.text, line.font, width, Qt::AlignLeft);
    block.layout->draw(&painter, QPointF(margin, y));
    return block.height;
}

double headingHeight(const QList<HeadingLine>& lines, double width)
{
    double height = 0;
    for (const HeadingLine& line : lines)
        height += PointText::wrapped(line.text, line.font, width, Qt::AlignLeft).height + 2;
    return height + 8;
}

HeadingLine continuedTitle(const QString& title)
{
    return {title + QStringLiteral(" (continued)"), PointText::systemFont(11, true), Qt::black};
}

TableLayout layOut(const QString& title, const QStringList& headers, const QList<QStringList>& rows,
                   const ReportHeading& heading)
{
    TableLayout table;
    const QList<double> natural = ReportExportService::naturalWidths(headers, rows);
    double naturalSum = 0;
    for (double width : natural)
        naturalSum += width;
    const bool portrait = headers.isEmpty() || naturalSum <= portraitWidth - 2 * margin;
    table.page = portrait ? QSizeF(portraitWidth, portraitHeight) : QSizeF(portraitHeight, portraitWidth);
    table.widths = ReportExportService::fit(natural, table.usableWidth());
    for (qsizetype column = 0; column < headers.size(); ++column)
        table.numeric.append(ReportExportService::isNumericColumn(rows, int(column)));

    const double headerRow = rowHeight(headers, table.widths, headerFont());
    const double bottom = table.page.height() - margin - footHeight;
    double y = margin + headingHeight(headingLines(title, heading), table.usableWidth()) + headerRow;
    table.pages.append(QList<int>());
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const double height = rowHeight(rows[index], table.widths, isTotalRow(rows[index]) ? headerFont() : bodyFont());
        // A row is never split: one that doesn't fit starts the next page, unless the page is empty.
        if (y + height > bottom && !table.pages.last().isEmpty()) {
            table.pages.append(QList<int>());
            y = margin + headingHeight({continuedTitle(title)}, table.usableWidth()) + headerRow;
        }
        table.pages.last().append(int(index));
        y += height;
    }
    return table;
}

} // namespace

ReportHeading ReportHeading::current(const AppSettings* settings, const std::optional<QString>& period,
                                     const std::optional<QString>& storeName)
{
    ReportHeading heading;
    heading.businessName = settings ? settings->businessName() : QStringLiteral("Brindle");
    if (settings) {
        heading.addressLine = settings->addressLine();
        heading.phoneNumber = settings->phoneNumber();
    }
    heading.storeName = storeName;
    heading.period = period;
    heading.generatedAt = Clock::now();
    return heading;
}

QString ReportHeading::contactLine() const
{
    QStringList parts;
    for (const QString& part : {addressLine, phoneNumber}) {
        if (!part.isEmpty())
            parts << part;
    }
    return parts.join(QStringLiteral(" · "));
}

QString ReportHeading::generatedLine() const
{
    QStringList parts;
    if (storeName && !storeName->isEmpty() && *storeName != QLatin1String("Default Market"))
        parts << QStringLiteral("Store: ") + *storeName;
    const QLocale locale = QLocale::system();
    parts << QStringLiteral("Generated %1 %2")
                 .arg(locale.toString(generatedAt.date(), QStringLiteral("MMM d, yyyy")),
                      locale.toString(generatedAt.time(), QLocale::ShortFormat));
    return parts.join(QStringLiteral(" · "));
}

void ReportExportService::writeCSV(const QString& title, const QStringList& headers, const QList<QStringList>& rows,
                                   const std::optional<ReportHeading>& heading, const QString& path)
{
    QList<QStringList> lines;
    if (heading) {
        lines << QStringList{heading->businessName} << QStringList{title};
        if (heading->period)
            lines << QStringList{*heading->period};
        lines << QStringList{heading->generatedLine()} << QStringList{};
    }
    lines << headers;
    lines.append(rows);
    writeWholeFile(path, CSVText::lines(lines).toUtf8());
}

QList<double> ReportExportService::naturalWidths(const QStringList& headers, const QList<QStringList>& rows)
{
    QList<double> widths;
    for (qsizetype column = 0; column < headers.size(); ++column) {
        double widest = PointText::singleLineWidth(headers[column], headerFont());
        for (const QStringList& row : rows)
            widest = std::max(widest, PointText::singleLineWidth(row.value(column), bodyFont()));
        widths.append(std::min(std::ceil(widest) + 8, widestNatural));
    }
    return widths;
}

QList<double> ReportExportService::fit(QList<double> widths, double usableWidth)
{
    double sum = 0;
    for (double width : widths)
        sum += width;
    if (widths.isEmpty())
        return widths;
    if (sum <= usableWidth) {
        const double share = (usableWidth - sum) / double(widths.size());
        for (double& width : widths)
            width += share;
        return widths;
    }
    double overflow = sum - usableWidth;
    while (overflow > 0.5) {
        // The widest column still above the floor gives way, down to the next widest at most.
        qsizetype widest = -1;
        for (qsizetype index = 0; index < widths.size(); ++index) {
            if (widths[index] > narrowestFitted && (widest < 0 || widths[index] > widths[widest]))
                widest = index;
        }
        if (widest < 0)
            break;
        double nextWidest = narrowestFitted;
        for (qsizetype index = 0; index < widths.size(); ++index) {
            if (index != widest && widths[index] > narrowestFitted)
                nextWidest = std::max(nextWidest, widths[index]);
        }
        const double cut = std::max(std::min(overflow, widths[widest] - nextWidest), 1.0);
        const double taken = std::min(cut, widths[widest] - narrowestFitted);
        widths[widest] -= taken;
        overflow -= taken;
    }
    return widths;
}

bool ReportExportService::isNumericColumn(const QList<QStringList>& rows, int column)
{
    bool judged = false;
    for (const QStringList& row : rows) {
        if (isTotalRow(row))
            continue;
        const QString cell = row.value(column);
        if (cell.isEmpty() || cell == QLatin1String("—"))
            continue;
        if (!passesAsNumber(cell))
            return false;
        judged = true;
    }
    return judged;
}

void ReportExportService::writePDF(const QString& title, const QStringList& headers, const QList<QStringList>& rows,
                                   const ReportHeading& heading, const QString& path)
{
    const TableLayout table = layOut(title, headers, rows, heading);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ReceiptPrintError::pdfContextFailed();
    {
        QPdfWriter writer(&file);
        writer.setResolution(72);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Brindle"));
        writer.setPageLayout(QPageLayout(QPageSize(table.page, QPageSize::Point, QString(), QPageSize::ExactMatch),
                                         QPageLayout::Portrait, QMarginsF(), QPageLayout::Point));
        QPainter painter;
        if (!painter.begin(&writer))
            throw ReceiptPrintError::pdfContextFailed();
        PointText::usePoints(painter);
        const double width = table.usableWidth();
        const qsizetype pageCount = table.pages.size();
        for (qsizetype page = 0; page < pageCount; ++page) {
            if (page > 0)
                writer.newPage();
            double y = margin;
            const QList<HeadingLine> lines = page == 0 ? headingLines(title, heading) : QList{continuedTitle(title)};
            for (const HeadingLine& line : lines)
                y += drawLine(painter, line, width, y) + 2;
            y += 8;
            painter.setPen(Qt::black);
            // The header row stands on every page.
            y += drawRow(painter, headers, table, headerFont(), y);
            drawRule(painter, table, y);
            for (int index : table.pages[page]) {
                const QStringList& row = rows[index];
                if (isTotalRow(row))
                    drawRule(painter, table, y);
                y += drawRow(painter, row, table, isTotalRow(row) ? headerFont() : bodyFont(), y);
            }
            const double footY = table.page.height() - margin - footHeight + 4;
            const QFont footFont = PointText::systemFont(8, false);
            painter.setPen(muted);
            PointText::wrapped(heading.generatedLine(), footFont, width, Qt::AlignLeft, QTextOption::NoWrap)
                .layout->draw(&painter, QPointF(margin, footY));
            PointText::wrapped(QStringLiteral("Page %1 of %2").arg(page + 1).arg(pageCount), footFont, width,
                               Qt::AlignRight, QTextOption::NoWrap)
                .layout->draw(&painter, QPointF(margin, footY));
        }
        painter.end();
    }
    if (!file.commit())
        throw ReceiptPrintError::pdfContextFailed();
}
