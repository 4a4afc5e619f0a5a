#pragma once

#include "access/useraccountsviewmodel.h"
#include "ui/settings/settingssection.h"

#include <QHash>
#include <QUuid>

class ErrorLabel;
class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class SegmentedControl;

// "User Accounts": every account with its role, PIN state and "Active" switch, an "Edit…" and a
// "Set PIN…" sheet per account, and the "Add User" form.
class UserAccountsSection : public SettingsSection {
    Q_OBJECT

public:
    enum class Field { name, username, password, pin };

    UserAccountsSection(ModelContext& context, AuthServicing& auth, SessionStore& session,
                        QWidget* parent = nullptr);

    UserAccountsViewModel& model() { return m_model; }
    QLineEdit* field(Field field) const { return m_fields[static_cast<int>(field)]; }
    SegmentedControl* rolePicker() const { return m_role; }
    QPushButton* createButton() const { return m_create; }
    ErrorLabel* errorLabel() const { return m_error; }
    // Why a switch of the list was refused.
    ErrorLabel* listErrorLabel() const { return m_listError; }

    // The widgets of one account's row; null when it isn't listed.
    QCheckBox* activeSwitch(const QUuid& userID) const;
    QPushButton* editButton(const QUuid& userID) const;
    QPushButton* setPinButton(const QUuid& userID) const;
    QLabel* pinLabel(const QUuid& userID) const;

private:
    struct Row {
        QLabel* name;
        QLabel* you;
        QLabel* username;
        QLabel* role;
        QLabel* pin;
        QPushButton* edit;
        QPushButton* setPin;
        QCheckBox* active;
    };

    void buildForm();
    void refreshRows();
    Row makeRow(const Ref<User>& user, int gridRow);
    void openPinDialog(const Ref<User>& user);
    void openEditSheet(const Ref<User>& user);

    UserAccountsViewModel m_model;
    QGridLayout* m_grid;
    QHash<QUuid, Row> m_rows;
    int m_nextGridRow = 0;
    QList<QLineEdit*> m_fields;
    SegmentedControl* m_role;
    ErrorLabel* m_error;
    ErrorLabel* m_listError;
    QPushButton* m_create;
};
