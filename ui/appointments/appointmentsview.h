#pragma once

#include "staff/appointmentsviewmodel.h"
#include "ui/navigation/editingscreen.h"

#include <QWidget>

#include <functional>

class AppEnvironment;
class AppointmentEditor;
class AppointmentListModel;
class DetailPages;
class QComboBox;
class QDateEdit;
class QListView;
class QPushButton;
class RecordListCard;

// The "Appointments" section: one day's bookings in time order beside the chosen one's editor,
// with the day to show, the staff filter and "New Appointment". Leaving an editor with unsaved
// edits (another booking, another day, another screen) asks first.
class AppointmentsView : public QWidget, public FormScreen {
    Q_OBJECT

public:
    // Ring Up hands a booking to the counter; without it the book offers none.
    using RingUp = std::function<void(const Appointment& appointment)>;

    explicit AppointmentsView(AppEnvironment& environment, RingUp ringUp = {}, QWidget* parent = nullptr);

    AppointmentsViewModel& model() { return m_model; }
    QPushButton* nextDayButton() const { return m_next; }
    QDateEdit* dayPicker() const { return m_dayPicker; }
    QPushButton* newAppointmentButton() const { return m_new; }
    QListView* list() const;
    // The editor of the chosen or new booking; null while none is open.
    AppointmentEditor* editor() const { return m_editor; }
    // The rows' times, in order, of those loaded.
    QStringList listedTimes() const;

    bool hasUnsavedEdits() const override;

private:
    QString editedName() const override;
    bool saveEdits() override;
    void discardEdits() override;

    QLayout* dayBar();
    // Read again as far as was loaded; from the top after the day or the filter changed.
    void refreshList(bool fromTop = false);
    // The row of the booking on the editor marked as chosen, loading pages down to it.
    void showChosenRow();
    void refreshStaffFilter();
    void showEditor(const Ref<Appointment>& appointment, bool isNew = false);
    // Moves to another day, or filter, once the editor may be left; the controls show the
    // current one until then.
    void changeView(std::function<void()> change);

    StaffService& m_staff;
    ModelContext& m_context;
    RingUp m_ringUp;
    AppointmentsViewModel m_model;
    AppointmentListModel* m_rows;

    QPushButton* m_previous;
    QPushButton* m_today;
    QPushButton* m_next;
    QDateEdit* m_dayPicker;
    QComboBox* m_staffFilter;
    QPushButton* m_new;
    RecordListCard* m_listCard;
    DetailPages* m_detailPages;
    AppointmentEditor* m_editor = nullptr;
};
