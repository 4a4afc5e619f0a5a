#pragma once

#include "ui/navigation/editingscreen.h"

#include <QDialog>

class ErrorLabel;
class MarketRegistry;
class MarketSwitcher;
class NewMarketModel;
class QLabel;
class QLineEdit;
class QPushButton;

// Makes another store, with its own first admin, from inside the running one. The new store opens
// only after a restart, which the panel shown on success offers.
class NewMarketSheet : public QDialog {
    Q_OBJECT

public:
    // "Switch & Relaunch" first passes `askToLeave`, so that unsaved edits are saved or dropped
    // knowingly.
    NewMarketSheet(MarketRegistry& registry, MarketSwitcher& switcher, QWidget* parent = nullptr,
                   EditingScreen::LeaveCheck askToLeave = {});

    NewMarketModel& model() const { return *m_model; }
    bool isShowingCreated() const;

private:
    QWidget* makeForm();
    QWidget* makeCreatedPanel();
    void create();
    void showCreated();
    void switchToCreated();

    MarketSwitcher& m_switcher;
    EditingScreen::LeaveCheck m_askToLeave;
    NewMarketModel* m_model;
    QWidget* m_form = nullptr;
    QWidget* m_created = nullptr;
    QLineEdit* m_marketName = nullptr;
    QLineEdit* m_adminName = nullptr;
    QLineEdit* m_adminUsername = nullptr;
    QLineEdit* m_adminPassword = nullptr;
    QLineEdit* m_confirmPassword = nullptr;
    ErrorLabel* m_error = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_create = nullptr;
    QLabel* m_createdMessage = nullptr;
    QPushButton* m_later = nullptr;
    QPushButton* m_switch = nullptr;
};
