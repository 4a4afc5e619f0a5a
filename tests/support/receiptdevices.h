#pragma once

#include "receipts/cashdrawer.h"
#include "receipts/printerdirectory.h"
#include "receipts/rawprinttransport.h"
#include "receipts/receiptprinting.h"

#include <optional>

// Stand-ins for the machine's printers, spooler, receipt printer and drawer, which remember what
// they were asked to do.
struct ListedPrinters : PrinterDirectory {
    QList<InstalledPrinter> printers;
    QList<InstalledPrinter> installedPrinters() override { return printers; }
};

struct RecordedTransport : RawPrintTransport {
    QList<std::pair<QByteArray, QString>> sent;
    std::optional<Refusal> failure;
    void send(const QByteArray& bytes, const QString& queue) override
    {
        if (failure)
            throw *failure;
        sent.append({bytes, queue});
    }
};

struct RecordedReceiptPrinter : ReceiptPrinting {
    struct Job {
        ReceiptData receipt;
        bool useThermalWidth = true;
        std::optional<InstalledPrinter> printer;
    };
    QList<Job> printed;
    std::optional<Refusal> failure; // a jam: thrown in place of printing
    void printReceipt(const ReceiptData& receipt, bool useThermalWidth,
                      const std::optional<InstalledPrinter>& printer) override
    {
        if (failure)
            throw *failure;
        printed.append({receipt, useThermalWidth, printer});
    }
    void exportPDF(const ReceiptData&, bool, const QString&) override {}
};

struct RecordedDrawer : CashDrawerOpening {
    int openings = 0;
    std::optional<Refusal> failure;
    void openDrawer() override
    {
        if (failure)
            throw *failure;
        ++openings;
    }
};
