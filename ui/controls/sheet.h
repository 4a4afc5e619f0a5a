#pragma once

#include <QDialog>

#include <optional>

class ErrorLabel;
class QLabel;
class QPushButton;
class QVBoxLayout;

// A modal sheet over a screen: a heading, the form a subclass fills in, the reason a try was
// refused, and Cancel beside the one button the sheet is for. That button runs primaryAction(),
// which closes the sheet only once it has done its work; a refusal keeps the sheet open with the
// reason. Cancel and Escape close it with nothing done. Subclasses name it with setTitle.
class Sheet : public QDialog {
    Q_OBJECT

public:
    ErrorLabel* errorLabel() const { return m_error; }
    QPushButton* cancelButton() const { return m_cancel; }
    QPushButton* primaryButton() const { return m_primary; }

protected:
    Sheet(const QString& primaryTitle, QWidget* parent);

    // The heading and the window's title.
    void setTitle(const QString& title);
    QLabel* heading() const { return m_heading; }
    // Where the subclass lays out its fields, between the heading and the error.
    QVBoxLayout* form() const { return m_form; }
    // The sheet's height follows the message, which takes no room while there is none.
    void showError(const std::optional<QString>& message);

    virtual void primaryAction() = 0;

private:
    QLabel* m_heading;
    QVBoxLayout* m_form;
    ErrorLabel* m_error;
    QPushButton* m_cancel;
    QPushButton* m_primary;
};
