#pragma once

#include "access/useraccountsviewmodel.h"
#include "ui/controls/sheet.h"

#include <functional>

class QLineEdit;
class SegmentedControl;

// "Edit…" on an account: its name, its role, and a new password for someone who forgot theirs.
// A refusal keeps the sheet open with the reason and what was typed.
class UserEditSheet : public Sheet {
    Q_OBJECT

public:
    // Saves the edit; gives the reason when it was refused.
    using Save = std::function<std::optional<QString>(const UserEdit& edit)>;

    UserEditSheet(const QString& title, const UserEdit& edit, Save save, QWidget* parent = nullptr);

    QLineEdit* nameField() const { return m_name; }
    SegmentedControl* rolePicker() const { return m_role; }
    QLineEdit* passwordField() const { return m_password; }
    QLineEdit* confirmField() const { return m_confirm; }

protected:
    void primaryAction() override;

private:
    UserEdit typed() const;

    Save m_save;
    QLineEdit* m_name;
    SegmentedControl* m_role;
    QLineEdit* m_password;
    QLineEdit* m_confirm;
};
