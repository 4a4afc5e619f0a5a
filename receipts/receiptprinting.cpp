#include "receipts/receiptprinting.h"

#include "receipts/receipthardwareerror.h"
#include "receipts/receiptrenderer.h"

#include <QLoggingCategory>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

Q_LOGGING_CATEGORY(lcPrinting, "tallyrun.printing")

namespace {

// One page exactly the receipt's size, no margins. Page sizes are kept in whole points, so the
// page is at most a fraction of a point wider than the content.
QPageLayout receiptPage(const QSizeF& size)
{
    return QPageLayout(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch), QPageLayout::Portrait,
                       QMarginsF(0, 0, 0, 0), QPageLayout::Point);
}

// Points are the unit of the whole receipt, so every device is told to work in them.
constexpr int pointsPerInch = 72;

} // namespace

void SystemReceiptPrinter::printReceipt(const ReceiptData& receipt, bool useThermalWidth,
                                        const std::optional<InstalledPrinter>& printer)
{
    const QSizeF size = ReceiptRenderer::contentSize(receipt, useThermalWidth);
    QPrinter job(QPrinter::HighResolution);
    job.setFullPage(true);
    job.setDocName(receipt.invoiceNumber);

    bool chosen = false;
    if (printer && !QPrinterInfo::printerInfo(printer->queue).isNull()) {
        job.setPrinterName(printer->queue);
        // An unknown name silently becomes the default printer: only the chosen queue will do.
        chosen = job.printerName() == printer->queue;
    }
    if (!chosen) {
        if (!m_panel)
            return;
        job.setPageLayout(receiptPage(size));
        if (!m_panel->choosePrinter(job))
            return;
    }
    job.setResolution(pointsPerInch);
    job.setPageLayout(receiptPage(size));
    QPainter painter;
    if (!painter.begin(&job)) {
        qCWarning(lcPrinting) << "The print job for" << receipt.invoiceNumber << "couldn't start on"
                              << job.printerName();
        return;
    }
    ReceiptRenderer::draw(receipt, painter, size);
    painter.end();
}

void SystemReceiptPrinter::exportPDF(const ReceiptData& receipt, bool useThermalWidth, const QString& path)
{
    const QSizeF size = ReceiptRenderer::contentSize(receipt, useThermalWidth);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ReceiptPrintError::pdfContextFailed();
    {
        QPdfWriter writer(&file);
        writer.setResolution(pointsPerInch);
        writer.setTitle(receipt.invoiceNumber);
        writer.setCreator(QStringLiteral("Brindle"));
        writer.setPageLayout(receiptPage(size));
        QPainter painter;
        if (!painter.begin(&writer))
            throw ReceiptPrintError::pdfContextFailed();
        ReceiptRenderer::draw(receipt, painter, size);
        painter.end();
    }
    if (!file.commit())
        throw ReceiptPrintError::pdfContextFailed();
}
