#pragma once

#include "ui/settings/settingssection.h"

class ErrorLabel;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class ReceiptPrintView;
class ReceiptSettingsModel;
class SessionStore;

// "Receipt": footer, page width, logo and the receipt printer, beside a preview of a receipt as
// these settings print it.
class ReceiptSettingsSection : public SettingsSection {
    Q_OBJECT

public:
    ReceiptSettingsSection(ReceiptSettingsModel& model, SessionStore& session, QWidget* parent = nullptr);

private:
    QWidget* logoRow();
    QWidget* printerRow();
    void chooseLogo();
    void askToRemoveLogo();
    void refresh();

    ReceiptSettingsModel& m_model;
    SessionStore& m_session;
    QLineEdit* m_footer;
    QCheckBox* m_thermalWidth;
    QLabel* m_logo;
    QPushButton* m_removeLogo;
    QComboBox* m_printer;
    QLabel* m_printerWarning;
    QLabel* m_printerMessage;
    QCheckBox* m_printAutomatically;
    QLineEdit* m_countryCode;
    ErrorLabel* m_error;
    ReceiptPrintView* m_preview;
};

// "Cash Drawer": how the drawer is connected, and a button that opens it now.
class CashDrawerSettingsSection : public SettingsSection {
    Q_OBJECT

public:
    explicit CashDrawerSettingsSection(ReceiptSettingsModel& model, QWidget* parent = nullptr);

private:
    void refresh();

    ReceiptSettingsModel& m_model;
    QCheckBox* m_enabled;
    QComboBox* m_connection;
    QComboBox* m_pin;
    QCheckBox* m_openOnCashSale;
    QPushButton* m_test;
    QLabel* m_message;
};
