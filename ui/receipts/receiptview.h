#pragma once

#include "receipts/receiptdata.h"
#include "ui/controls/sheet.h"

class AppEnvironment;
class ReceiptPrintView;
class SessionStore;

// A sale's receipt on screen as it prints, and Print, through the receipt printer chosen in
// Settings (or the print dialog when there is none). Shown after a refund and for a reprint.
class ReceiptView : public Sheet {
    Q_OBJECT

public:
    ReceiptView(const Sale& sale, AppEnvironment& environment, SessionStore& session, QWidget* parent);

    // Opens the sale's receipt over `parent`; it deletes itself once closed. Nothing opens while
    // the store's settings aren't loaded, as they make the receipt.
    static ReceiptView* present(const Sale& sale, AppEnvironment& environment, SessionStore& session,
                                QWidget* parent);

    const ReceiptData& receipt() const { return m_receipt; }
    ReceiptPrintView* preview() const { return m_preview; }

protected:
    void primaryAction() override;

private:
    AppEnvironment& m_environment;
    SessionStore& m_session;
    ReceiptData m_receipt;
    ReceiptPrintView* m_preview;
};
