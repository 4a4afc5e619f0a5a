#pragma once

#include "receipts/cashdrawer.h"
#include "receipts/printerdirectory.h"
#include "receipts/receiptdata.h"
#include "viewmodel/viewmodel.h"

#include <optional>

class ReceiptPrinting;

// The Receipt and Cash Drawer settings: each change is written to the store's settings and saved
// at once, or undone whole when the store refuses it. The printer list is read when asked for,
// since printers come and go while the program runs.
class ReceiptSettingsModel : public ViewModel {
    Q_OBJECT

public:
    struct PrinterChoice {
        QString label;
        std::optional<InstalledPrinter> printer; // nothing: ask each time
    };

    ReceiptSettingsModel(ModelContext& context, Ref<AppSettings> settings, PrinterDirectory& directory,
                         ReceiptPrinting& printing, CashDrawerOpening& drawer, QObject* parent = nullptr);

    const AppSettings& settings() const { return *m_settings; }

    void refreshPrinters();
    QList<PrinterChoice> printerChoices() const;
    qsizetype chosenPrinterIndex() const;
    bool isChosenPrinterMissing() const;
    void choosePrinter(const std::optional<InstalledPrinter>& printer);

    void setReceiptFooter(const QString& footer);
    void setUseThermalWidth(bool on);
    void setPrintAutomatically(bool on);
    void setCountryCallingCode(const QString& code);
    // The previous logo stays when the file isn't an image.
    void chooseLogo(const QString& path);
    void removeLogo();

    void setCashDrawerEnabled(bool on);
    void setDrawerConnection(CashDrawerConnection connection);
    void setDrawerPin(DrawerPin pin);
    void setOpenOnCashSale(bool on);

    // The outcome is in printerTestMessage / drawerTestMessage.
    void testPrint(const QString& cashierName);
    void testDrawer();
    std::optional<QString> printerTestMessage() const { return m_printerTestMessage; }
    std::optional<QString> drawerTestMessage() const { return m_drawerTestMessage; }
    bool drawerTestFailed() const { return m_drawerTestFailed; }

    // What a sale's receipt looks like with these settings, for the preview beside them.
    ReceiptData sampleReceipt() const;
    static ReceiptData testReceipt(const AppSettings& settings, const QString& cashierName);

Q_SIGNALS:
    void changed();

private:
    template <class Change> void change(Change apply);

    ModelContext& m_context;
    Ref<AppSettings> m_settings;
    PrinterDirectory& m_directory;
    ReceiptPrinting& m_printing;
    CashDrawerOpening& m_drawer;
    QList<InstalledPrinter> m_printers;
    std::optional<QString> m_printerTestMessage;
    std::optional<QString> m_drawerTestMessage;
    bool m_drawerTestFailed = false;
};
