#pragma once

#include <QScrollArea>

class AppEnvironment;
class POSActionBus;
class QVBoxLayout;
class ReceiptSettingsModel;
class SessionStore;

// The "Settings" section: one form over the store's settings, a section for each concern in a
// fixed order. Admins only; the navigation never shows it to anyone else.
class SettingsView : public QScrollArea {
    Q_OBJECT

public:
    SettingsView(AppEnvironment& environment, SessionStore& session, POSActionBus& bus, QWidget* parent = nullptr);

protected:
    // Tab follows the sections as they read.
    bool focusNextPrevChild(bool next) override;

private:
    void build();
    QList<QWidget*> receiptSections();
    QWidget* approvalsSection();
    QWidget* usersSection();

    AppEnvironment& m_environment;
    SessionStore& m_session;
    POSActionBus& m_bus;
    QVBoxLayout* m_sections;
    bool m_built = false;
    ReceiptSettingsModel* m_receiptSettings = nullptr;
};
