#pragma once

#include "receipts/printerdirectory.h"
#include "receipts/receiptdata.h"

#include <optional>

class QPrinter;

// Takes a laid-out receipt to paper or to a PDF file.
class ReceiptPrinting {
public:
    virtual ~ReceiptPrinting() = default;
    // With no printer, or one that is gone, the person picks one in the print dialog; a receipt is
    // never sent silently to some other printer. The print system reports its own failures.
    virtual void printReceipt(const ReceiptData& receipt, bool useThermalWidth,
                              const std::optional<InstalledPrinter>& printer) = 0;
    // One page of the receipt's own size, however long; throws ReceiptPrintError when the file
    // can't be written, leaving no half-written file behind.
    virtual void exportPDF(const ReceiptData& receipt, bool useThermalWidth, const QString& path) = 0;
};

// The print dialog, which only the screens can show.
class PrintPanel {
public:
    virtual ~PrintPanel() = default;
    // False when the person cancelled.
    virtual bool choosePrinter(QPrinter& printer) = 0;
};

class SystemReceiptPrinter : public ReceiptPrinting {
public:
    // Until a panel is set, a receipt with no usable printer isn't printed.
    void setPrintPanel(PrintPanel* panel) { m_panel = panel; }

    void printReceipt(const ReceiptData& receipt, bool useThermalWidth,
                      const std::optional<InstalledPrinter>& printer) override;
    void exportPDF(const ReceiptData& receipt, bool useThermalWidth, const QString& path) override;

private:
    PrintPanel* m_panel = nullptr;
};
