#include "ui/receipts/dialogprintpanel.h"

#include <QPrintDialog>

bool DialogPrintPanel::choosePrinter(QPrinter& printer)
{
    QPrintDialog dialog(&printer, m_window);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    return dialog.exec() == QDialog::Accepted;
}
