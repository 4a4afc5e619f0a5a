#pragma once

#include <QList>
#include <QString>

#include <optional>

struct InstalledPrinter {
    QString queue; // the print system's identifier, and the key a choice is kept by
    QString name;

    bool operator==(const InstalledPrinter& other) const = default;
};

// The printers of the machine, sorted by name.
class PrinterDirectory {
public:
    virtual ~PrinterDirectory() = default;
    virtual QList<InstalledPrinter> installedPrinters() = 0;

    // The first printer whose queue is exactly `queue`; nothing for an empty queue.
    std::optional<InstalledPrinter> printerWithQueue(const QString& queue);
};

// The print system's queues, as CUPS lists them to Qt: queue = printer name, name = description.
class SystemPrinterDirectory : public PrinterDirectory {
public:
    QList<InstalledPrinter> installedPrinters() override;
};
