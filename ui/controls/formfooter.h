#pragma once

#include <QWidget>

#include <optional>

class ErrorLabel;
class QLabel;
class QPushButton;

// The foot of a record's form: delete on the left; on the right the reason a save was refused or
// "Saved" once it wasn't, and Save, which Ctrl+S presses too.
class FormFooter : public QWidget {
    Q_OBJECT

public:
    explicit FormFooter(const QString& deleteTitle, QWidget* parent = nullptr);

    QPushButton* deleteButton() const { return m_delete; }
    QPushButton* saveButton() const { return m_save; }
    ErrorLabel* errorLabel() const { return m_error; }

    // absent failure: saved.
    void showSaveResult(const std::optional<QString>& failure);
    // "Saved" no longer holds once the form is edited.
    void markEdited();
    // Another record on the form: nothing saved or refused yet.
    void clear();
    // A record not yet in the store has nothing to delete; the foot says it isn't saved.
    void showNewRecord(bool isNew);

private:
    QPushButton* m_delete;
    QLabel* m_notSaved;
    ErrorLabel* m_error;
    QLabel* m_saved;
    QPushButton* m_save;
};
