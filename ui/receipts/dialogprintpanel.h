#pragma once

#include "receipts/receiptprinting.h"

class QWidget;

// The system's print dialog, over the window it belongs to.
class DialogPrintPanel : public PrintPanel {
public:
    explicit DialogPrintPanel(QWidget* window)
        : m_window(window)
    {
    }

    bool choosePrinter(QPrinter& printer) override;

private:
    QWidget* m_window;
};
