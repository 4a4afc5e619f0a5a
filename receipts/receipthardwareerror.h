#pragma once

#include "refusal/refusal.h"

// Why the receipt printer didn't take a command, in the words shown at the counter.
class ReceiptHardwareError : public Refusal {
public:
    enum class Case { printerNotFound, sendFailed, noPrinterChosen };

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

    Case errorCase() const { return m_case; }

private:
    ReceiptHardwareError(Case errorCase, const QString& description)
        : Refusal(description)
        , m_case(errorCase)
    {
    }

    Case m_case;
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
