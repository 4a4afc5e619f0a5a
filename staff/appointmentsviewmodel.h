#pragma once

#include "records/appointment.h"
#include "staff/staffservice.h"
#include "viewmodel/viewmodel.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

// One booking of the day list, in finished text.
struct AppointmentRow {
    Ref<Appointment> appointment;
    QDateTime start; // as stored: with the id, the key of the next page
    QString timeRange;
    QString service; // with " with {staff}" when someone is named
    QString customer;
    QString status; // "Completed" or "Cancelled", else empty
    std::optional<QString> clash;
};

// The appointment book's day list: the day shown, the staff filter, and the rows. A store that
// can't be read gives an empty day and says so in errorMessage.
class AppointmentsViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString newAppointmentTitle() { return QStringLiteral("New Appointment"); }
    static QString previousDayTitle() { return QStringLiteral("Previous day"); }
    static QString nextDayTitle() { return QStringLiteral("Next day"); }
    static QString todayTitle() { return QStringLiteral("Today"); }
    static QString staffFilterTitle() { return QStringLiteral("Staff"); }
    static QString allStaffTitle() { return QStringLiteral("All Staff"); }
    static QString emptyTitle() { return QStringLiteral("No appointments"); }
    static QString emptyMessage()
    {
        return QStringLiteral("Nothing booked for this day. Click New Appointment to book one.");
    }
    static QString noSelectionTitle() { return QStringLiteral("Select an appointment"); }
    static QString noSelectionMessage()
    {
        return QStringLiteral(
            "Choose a booking to change it, ring it up, or mark it cancelled or a no-show.");
    }

    AppointmentsViewModel(StaffService& staff, ModelContext& context, QObject* parent = nullptr);

    // Starts today.
    QDate day() const { return m_day; }
    void setDay(const QDate& day);
    void showPreviousDay() { setDay(m_day.addDays(-1)); }
    void showNextDay() { setDay(m_day.addDays(1)); }
    void showToday();

    std::optional<QUuid> staffFilter() const { return m_staffFilter; }
    void setStaffFilter(const std::optional<QUuid>& staffID);
    // Every member, for the filter after "All Staff".
    QList<Ref<StaffMember>> staffChoices();

    static constexpr int pageSize = 100;
    // The day's bookings of the filter by start, a page at a time: the `limit` bookings after
    // `after`, the last row shown, or from the first without it; fewer than `limit` means the end.
    // Clashes are looked for among everyone's.
    QList<AppointmentRow> page(const AppointmentRow* after = nullptr, int limit = pageSize);
    static QString clashText(const QString& staffName)
    {
        return QStringLiteral("Overlaps another booking for %1").arg(staffName);
    }

Q_SIGNALS:
    void dayChanged();
    void staffFilterChanged();
    // A save or rollback touched the book or the staff: the rows are out of date.
    void appointmentsChanged();

private:
    StaffService& m_staff;
    ModelContext& m_context;
    QDate m_day;
    std::optional<QUuid> m_staffFilter;
};
