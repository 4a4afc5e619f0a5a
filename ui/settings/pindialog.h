#pragma once

#include <QDialog>

#include <functional>
#include <optional>

class ErrorLabel;
class QLineEdit;
class QPushButton;

// "Set PIN…": a small sheet over the settings for one user's PIN. A refused PIN keeps the sheet
// open with the reason.
class PinDialog : public QDialog {
    Q_OBJECT

public:
    // Saves the typed PIN; gives the reason when it was refused.
    using Save = std::function<std::optional<QString>(const QString& pin)>;

    PinDialog(const QString& title, const QString& note, Save save, QWidget* parent = nullptr);

    QLineEdit* pinField() const { return m_pin; }
    QPushButton* saveButton() const { return m_saveButton; }
    ErrorLabel* errorLabel() const { return m_error; }

private:
    void save();

    Save m_save;
    QLineEdit* m_pin;
    ErrorLabel* m_error;
    QPushButton* m_saveButton;
};
