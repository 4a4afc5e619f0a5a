#pragma once

#include "refusal/caseerror.h"

enum class ReceiptHardwareErrorCase { printerNotFound, sendFailed, noPrinterChosen };

// Why the receipt printer didn't take a command, in the words shown at the counter.
class ReceiptHardwareError : public CasedRefusal<ReceiptHardwareErrorCase> {
public:
    static ReceiptHardwareError printerNotFound(const QString& name)
    {
        return {Case::printerNotFound,
                QStringLiteral("The receipt printer \"%1\" isn't connected to this computer. Check it's switched on "
                               "and plugged in, or choose it again in Settings > Receipt.")
                    .arg(name)};
    }
    static ReceiptHardwareError sendFailed(const QString& detail)
    {
        return {Case::sendFailed, QStringLiteral("The printer didn't accept the command: %1").arg(detail)};
    }
    static ReceiptHardwareError noPrinterChosen()
    {
        return {Case::noPrinterChosen, QStringLiteral("Choose your receipt printer in Settings > Receipt first — the "
                                                      "cash drawer opens through it.")};
    }

private:
    using CasedRefusal::CasedRefusal;
};

class ReceiptPrintError : public Refusal {
public:
    static ReceiptPrintError pdfContextFailed() { return ReceiptPrintError(); }

private:
    ReceiptPrintError()
        : Refusal(QStringLiteral("Could not create the PDF file."))
    {
    }
};

class CashDrawerError : public Refusal {
public:
    static CashDrawerError notConfigured() { return CashDrawerError(); }

private:
    CashDrawerError()
        : Refusal(QStringLiteral("No cash drawer is configured. Check Settings."))
    {
    }
};
