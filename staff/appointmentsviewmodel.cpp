#include "staff/appointmentsviewmodel.h"

#include "clock/clock.h"
#include "staff/appointmenttexts.h"

AppointmentsViewModel::AppointmentsViewModel(StaffService& staff, ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_staff(staff)
    , m_day(Clock::now().date())
{
    context.onChange(this, {&Appointment::schema(), &StaffMember::schema()},
                     [this] { Q_EMIT appointmentsChanged(); });
}

void AppointmentsViewModel::setDay(const QDate& day)
{
    if (day.isValid() && replace(m_day, day))
        Q_EMIT dayChanged();
}

void AppointmentsViewModel::showToday()
{
    setDay(Clock::now().date());
}

void AppointmentsViewModel::setStaffFilter(const std::optional<QUuid>& staffID)
{
    if (replace(m_staffFilter, staffID))
        Q_EMIT staffFilterChanged();
}

QList<Ref<StaffMember>> AppointmentsViewModel::staffChoices()
{
    return reading(QList<Ref<StaffMember>>(), [this] { return m_staff.allStaff(); });
}

QList<AppointmentRow> AppointmentsViewModel::rows()
{
    return reading(QList<AppointmentRow>(), [this] {
        const QList<Ref<Appointment>> around = m_staff.appointmentsAround(m_day);
        QList<AppointmentRow> result;
        for (const Ref<Appointment>& appointment : StaffService::appointments(m_day, around, m_staffFilter)) {
            AppointmentRow row{appointment,
                               AppointmentTexts::timeRange(*appointment),
                               appointment->serviceName(),
                               appointment->customerName(),
                               {},
                               {}};
            if (!appointment->staffName().isEmpty())
                row.service += QStringLiteral(" with ") + appointment->staffName();
            const AppointmentStatus status = appointment->status();
            if (status == AppointmentStatus::completed || status == AppointmentStatus::cancelled)
                row.status = AppointmentStatuses::title(status);
            if (!StaffService::clashes(*appointment, around).isEmpty())
                row.clash = clashText(appointment->staffName());
            result.append(row);
        }
        return result;
    });
}
