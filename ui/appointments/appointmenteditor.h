#pragma once

#include "staff/appointmenteditormodel.h"

#include <QWidget>

class ErrorLabel;
class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;

// One booking beside the day list, new or chosen: when, what and who, the customer, and the buttons
// its status allows. What is typed stays here until "Book Appointment" or "Save".
class AppointmentEditor : public QWidget {
    Q_OBJECT

public:
    AppointmentEditor(StaffService& staff, ModelContext& context, const Ref<Appointment>& appointment,
                      const QDate& defaultDay, QWidget* parent = nullptr);

    AppointmentEditorModel& model() { return m_model; }
    QLabel* titleLabel() const { return m_title; }
    QLabel* subtitleLabel() const { return m_subtitle; }
    QDateTimeEdit* startField() const { return m_start; }
    QSpinBox* lengthField() const { return m_length; }
    QComboBox* servicePicker() const { return m_service; }
    QComboBox* staffPicker() const { return m_staff; }
    QComboBox* customerPicker() const { return m_customer; }
    QLineEdit* walkInNameField() const { return m_walkInName; }
    QPlainTextEdit* notesField() const { return m_notes; }
    QLabel* clashLabel() const { return m_clash; }
    QPushButton* bookButton() const { return m_book; }
    QPushButton* noShowButton() const { return m_noShow; }
    QPushButton* cancelButton() const { return m_cancel; }
    QPushButton* bookAgainButton() const { return m_bookAgain; }
    QPushButton* deleteButton() const { return m_delete; }
    QPushButton* ringUpButton() const { return m_ringUp; }
    // "Ring Up" shows on a booked appointment only where the counter can take it.
    void offerRingUp();

Q_SIGNALS:
    // A booking was made or changed and saved.
    void saved(const Ref<Appointment>& appointment);
    // The booking is gone; the editor is of no more use.
    void deleted();
    void ringUpRequested(const Ref<Appointment>& appointment);

protected:
    // Tab follows the form as it reads.
    bool focusNextPrevChild(bool next) override;

private:
    QWidget* whenSection();
    QWidget* whatWhoSection();
    QWidget* customerSection();
    QWidget* buttonRow();
    void fillPickers();
    // The widgets from the model, after a load, a save or a change of status.
    void showFields();
    void showStatus();
    void showClash();
    void confirmDelete();

    AppointmentEditorModel m_model;
    QLabel* m_title;
    QLabel* m_subtitle;
    ErrorLabel* m_error;
    QDateTimeEdit* m_start = nullptr;
    QSpinBox* m_length = nullptr;
    QComboBox* m_service = nullptr;
    QComboBox* m_staff = nullptr;
    QLabel* m_clash = nullptr;
    QComboBox* m_customer = nullptr;
    QWidget* m_walkIn = nullptr;
    QLineEdit* m_walkInName = nullptr;
    QLineEdit* m_walkInPhone = nullptr;
    QPlainTextEdit* m_notes = nullptr;
    QList<QWidget*> m_editable; // usable only while the booking counts as booked
    QPushButton* m_book = nullptr;
    QPushButton* m_noShow = nullptr;
    QPushButton* m_ringUp = nullptr;
    bool m_offersRingUp = false;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_bookAgain = nullptr;
    QPushButton* m_delete = nullptr;
};
