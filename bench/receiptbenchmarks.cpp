// Laying out, drawing, exporting and printing a long receipt. Printing goes through a CUPS
// scheduler of the benchmark's own, so it measures what a sale waits for on the counter's thread.

#include "receipts/receiptprinting.h"
#include "receipts/receiptrenderer.h"
#include "support/cupsscheduler.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>

namespace {

ReceiptData receiptOf(int lines)
{
    ReceiptData receipt;
    receipt.businessName = QStringLiteral("Adwoa's Provisions");
    receipt.addressLine = QStringLiteral("12 Ring Road, Accra");
    receipt.invoiceNumber = QStringLiteral("INV-20260309-0042");
    receipt.timestamp = QDateTime(QDate(2026, 3, 9), QTime(14, 5));
    receipt.cashierName = QStringLiteral("Ama Mensah");
    receipt.currencySymbol = QStringLiteral("₵");
    for (int index = 1; index <= lines; ++index)
        receipt.lines.append({QStringLiteral("Jasmine Rice 5kg, item %1").arg(index), 1.5, 95, 142.5, QStringLiteral("kg")});
    receipt.subtotal = receipt.total = 142.5 * lines;
    receipt.taxLines = {{QStringLiteral("VAT"), 10}, {QStringLiteral("NHIL"), 2.5}, {QStringLiteral("GETFund"), 2.5}};
    receipt.payments = {{QStringLiteral("Cash"), receipt.total, receipt.total + 20, 20}};
    receipt.footer = QStringLiteral("Thank you for your business!");
    return receipt;
}

void BM_LayOutAndDrawReceipt(benchmark::State& state)
{
    const ReceiptData receipt = receiptOf(int(state.range(0)));
    const QSizeF size = ReceiptRenderer::contentSize(receipt, true);
    QImage page(int(std::ceil(size.width())), int(std::ceil(size.height())), QImage::Format_RGB32);
    page.setDotsPerMeterX(2835); // 72 dpi: one pixel a point
    page.setDotsPerMeterY(2835);
    for (auto _ : state) {
        const QSizeF measured = ReceiptRenderer::contentSize(receipt, true);
        page.fill(Qt::white);
        QPainter painter(&page);
        ReceiptRenderer::draw(receipt, painter, measured);
    }
}
BENCHMARK(BM_LayOutAndDrawReceipt)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_ExportReceiptPdf(benchmark::State& state)
{
    const ReceiptData receipt = receiptOf(int(state.range(0)));
    QTemporaryDir folder;
    SystemReceiptPrinter printer;
    const QString path = folder.filePath(QStringLiteral("receipt.pdf"));
    for (auto _ : state)
        printer.exportPDF(receipt, true, path);
}
BENCHMARK(BM_ExportReceiptPdf)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_PrintReceiptToCupsQueue(benchmark::State& state)
{
    CupsScheduler scheduler;
    if (!scheduler.isRunning()) {
        state.SkipWithError(scheduler.whyNotRunning().toStdString().c_str());
        return;
    }
    const ReceiptData receipt = receiptOf(int(state.range(0)));
    SystemReceiptPrinter printer;
    const InstalledPrinter queue{scheduler.queue(), scheduler.queue()};
    for (auto _ : state)
        printer.printReceipt(receipt, true, queue);
}
BENCHMARK(BM_PrintReceiptToCupsQueue)->Arg(5)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
