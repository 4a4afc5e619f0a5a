#include "receipts/printerdirectory.h"

#include <QCollator>
#include <QPrinterInfo>

#include <algorithm>

std::optional<InstalledPrinter> PrinterDirectory::printerWithQueue(const QString& queue)
{
    if (queue.isEmpty())
        return std::nullopt;
    for (const InstalledPrinter& printer : installedPrinters()) {
        if (printer.queue == queue)
            return printer;
    }
    return std::nullopt;
}

QList<InstalledPrinter> SystemPrinterDirectory::installedPrinters()
{
    QList<InstalledPrinter> printers;
    for (const QPrinterInfo& info : QPrinterInfo::availablePrinters()) {
        const QString queue = info.printerName();
        if (queue.isEmpty())
            continue;
        const QString description = info.description();
        printers.append({queue, description.isEmpty() ? queue : description});
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(printers.begin(), printers.end(), [&collator](const InstalledPrinter& a, const InstalledPrinter& b) {
        return collator.compare(a.name, b.name) < 0;
    });
    return printers;
}
