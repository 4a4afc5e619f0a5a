#include "staff/appointmentsviewmodel.h"

#include "clock/clock.h"
#include "staff/appointmenttexts.h"

AppointmentsViewModel::AppointmentsViewModel(StaffService& staff, ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_staff(staff)
    , m_context(context)
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

QList<AppointmentRow> AppointmentsViewModel::page(const AppointmentRow* after, int limit)
{
    return reading(QList<AppointmentRow>(), [&] {
        using Col = Appointment::Col;
        Condition where = Col::start >= m_day.startOfDay() && Col::start < m_day.addDays(1).startOfDay();
        if (m_staffFilter)
            where = where && (Col::staffID == *m_staffFilter);
        if (after)
            where = where && Condition(QStringLiteral("(\"start\", \"id\") > (?, ?)"),
                                       {toStoredValue(after->start), after->appointment->idText()});
        const QList<Ref<Appointment>> day = m_context.fetch<Appointment>(FetchDescriptor(where)
                                                                             .sortedBy(ascending(Col::start))
                                                                             .sortedBy(ascending(Col::id))
                                                                             .limitedTo(limit));
        if (day.isEmpty())
            return QList<AppointmentRow>();
        const QList<Ref<Appointment>> around = m_staff.appointmentsAround(m_day);
        QList<AppointmentRow> result;
        result.reserve(day.size());
        for (const Ref<Appointment>& appointment : day) {
            AppointmentRow row{appointment,
                               appointment->start(),
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
