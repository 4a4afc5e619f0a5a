#include "staff/appointmenteditormodel.h"

#include "clock/clock.h"
#include "records/customer.h"
#include "staff/appointmenttexts.h"
#include "store/unitofwork.h"

#include <algorithm>

AppointmentEditorModel::AppointmentEditorModel(StaffService& staff, ModelContext& context,
                                               Ref<Appointment> appointment, const QDate& defaultDay,
                                               QObject* parent)
    : ViewModel(parent)
    , m_staff(staff)
    , m_context(context)
    , m_appointment(std::move(appointment))
    , m_defaultDay(defaultDay)
{
    load();
    m_context.onChange(this, {&Appointment::schema()}, [this] {
        // Read again at the next warning: another booking may have come or gone.
        m_aroundDay = QDate();
        Q_EMIT appointmentsChanged();
    });
}

void AppointmentEditorModel::load()
{
    m_fields = Fields{};
    if (!m_appointment) {
        m_fields.start = QDateTime(m_defaultDay, QTime(9, 0));
    } else {
        const Appointment& booking = *m_appointment;
        m_fields.start = booking.start();
        m_fields.duration = booking.durationMinutes();
        m_fields.customerID = booking.customerID();
        // A customer's own name and phone are theirs, not typed.
        if (!m_fields.customerID) {
            m_fields.walkInName = booking.customerName();
            m_fields.walkInPhone = booking.customerPhone();
        }
        m_fields.serviceID = booking.serviceID();
        m_fields.staffID = booking.staffID();
        m_fields.notes = booking.notes();
    }
    m_loaded = m_fields;
}

QString AppointmentEditorModel::title() const
{
    return isNew() ? newTitle() : m_appointment->serviceName();
}

QString AppointmentEditorModel::subtitle() const
{
    if (isNew())
        return {};
    QString text = AppointmentStatuses::title(m_appointment->status());
    if (!m_appointment->saleInvoiceNumber().isEmpty())
        text += QStringLiteral(" · ") + m_appointment->saleInvoiceNumber();
    return text;
}

QList<Ref<Product>> AppointmentEditorModel::services()
{
    return reading(QList<Ref<Product>>(), [this] { return m_staff.activeServices(); });
}

QList<Ref<StaffMember>> AppointmentEditorModel::staffChoices()
{
    return reading(QList<Ref<StaffMember>>(), [this] {
        QList<Ref<StaffMember>> members = m_staff.activeStaff();
        const std::optional<QUuid> chosen = m_fields.staffID;
        const bool offered = std::any_of(members.begin(), members.end(), [&](const Ref<StaffMember>& member) {
            return member->id() == chosen;
        });
        // Switched off since the booking: still theirs until someone else is chosen.
        if (chosen && !offered)
            if (const Ref<StaffMember> member = m_context.find<StaffMember>(*chosen))
                members.append(member);
        return members;
    });
}

QList<CustomerChoice> AppointmentEditorModel::customers()
{
    return reading(QList<CustomerChoice>(), [this] {
        // Names only: a shop's thousands of customers need no records for a picker.
        return m_context.rows<CustomerChoice>(
            QStringLiteral("SELECT \"id\", \"name\" FROM \"Customer\" ORDER BY \"name\""), {},
            [](const SqliteStatement& row) {
                return CustomerChoice{QUuid::fromString(row.text(0)), row.text(1)};
            });
    });
}

const QList<Ref<Appointment>>& AppointmentEditorModel::appointmentsAround(const QDate& day)
{
    if (day != m_aroundDay) {
        m_around = reading(QList<Ref<Appointment>>(), [&] { return m_staff.appointmentsAround(day); });
        m_aroundDay = day;
    }
    return m_around;
}

std::optional<QString> AppointmentEditorModel::clashWarning()
{
    if (!m_fields.staffID || !isBooked())
        return std::nullopt;
    // A copy with the editor's values; it keeps the booking's id, so it doesn't clash with itself.
    const Ref<Appointment> probe =
        m_appointment ? m_appointment->draft<Appointment>() : std::make_shared<Appointment>();
    probe->setStart(m_fields.start);
    probe->setDurationMinutes(m_fields.duration);
    probe->setStaffID(m_fields.staffID);
    const QList<Ref<Appointment>> hits =
        StaffService::clashes(*probe, appointmentsAround(m_fields.start.date()));
    if (hits.isEmpty())
        return std::nullopt;
    const Appointment& first = *hits.first();
    return QStringLiteral("%1 already has %2 at %3. You can still save.")
        .arg(first.staffName(), first.serviceName(), AppointmentTexts::time(first.start()));
}

bool AppointmentEditorModel::hasUnsavedEdits() const
{
    return isBooked() && m_fields != m_loaded;
}

void AppointmentEditorModel::discardEdits()
{
    load();
    Q_EMIT fieldsChanged();
}

bool AppointmentEditorModel::save()
{
    setErrorMessage(std::nullopt);
    const bool saved = writing([this] {
        const QList<Ref<Product>> active = m_staff.activeServices();
        const auto chosen = std::find_if(active.begin(), active.end(), [this](const Ref<Product>& service) {
            return service->id() == m_fields.serviceID;
        });
        const Ref<Product> service = chosen == active.end() ? nullptr : *chosen;
        const Ref<StaffMember> member =
            m_fields.staffID ? m_context.find<StaffMember>(*m_fields.staffID) : nullptr;
        const Ref<Customer> customer =
            m_fields.customerID ? m_context.find<Customer>(*m_fields.customerID) : nullptr;
        m_appointment = performUnitOfWork(m_context, [&] {
            // A new booking is made afresh at each try, so that a failed one leaves nothing behind.
            const Ref<Appointment> target = m_appointment ? m_appointment : std::make_shared<Appointment>();
            if (!m_appointment)
                target->setCreatedAt(Clock::now());
            target->setStart(m_fields.start);
            target->setDurationMinutes(m_fields.duration);
            target->setNotes(m_fields.notes);
            target->setCustomerID(m_fields.customerID);
            if (!m_fields.customerID) {
                target->setCustomerName(m_fields.walkInName.trimmed());
                target->setCustomerPhone(m_fields.walkInPhone.trimmed());
            }
            m_staff.save(target, service, member, customer);
            return target;
        });
    });
    if (saved)
        discardEdits();
    return saved;
}

bool AppointmentEditorModel::changeStatus(AppointmentStatus status)
{
    Q_ASSERT(m_appointment);
    if (!saveOrUndo(m_context, [&] { m_appointment->setStatus(status); }))
        return false;
    discardEdits();
    return true;
}

bool AppointmentEditorModel::deleteAppointment()
{
    Q_ASSERT(m_appointment);
    return saveOrUndo(m_context, [this] { m_context.remove(m_appointment); });
}
