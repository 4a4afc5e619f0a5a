#include "staff/staffdetailmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "staff/appointmenttexts.h"
#include "store/unitofwork.h"

#include <algorithm>

StaffDetailModel::StaffDetailModel(StaffService& staff, ModelContext& context, SessionStore& session,
                                   Ref<StaffMember> member, QObject* parent)
    : ViewModel(parent)
    , m_staff(staff)
    , m_context(context)
    , m_session(session)
    , m_member(std::move(member))
{
    Q_ASSERT(m_member);
    readFields();
    m_context.onChange(this,
                       {&StaffMember::schema(), &Sale::schema(), &SaleItem::schema(), &Appointment::schema()},
                       [this] { Q_EMIT detailChanged(); });
}

std::optional<double> StaffDetailModel::rateFromText(const QString& text)
{
    QString typed = text.trimmed();
    if (typed.endsWith(QLatin1Char('%')))
        typed.chop(1);
    const NumberEntry entry = NumberEntry::quantity(typed);
    if (!entry.value)
        return std::nullopt;
    // To a hundredth of a percent, as the field shows it.
    return Rounding::toPlaces(std::clamp(*entry.value, 0.0, 100.0), 2) / 100;
}

QString StaffDetailModel::textFromRate(double rate)
{
    QString text = Currency::percentText(rate);
    text.chop(1); // the field's note says "%"
    return text;
}

std::optional<QString> StaffDetailModel::commissionProblem() const
{
    return commissionRate() ? std::nullopt : std::optional(commissionProblemText());
}

bool StaffDetailModel::hasUnsavedEdits() const
{
    // The rate as the field showed it, so that a rate kept to more places than shown isn't an edit.
    return m_name != m_member->name() || m_phone != m_member->phone() || m_isActive != m_member->isActive() ||
           m_notes != m_member->notes() ||
           commissionRate() != rateFromText(textFromRate(m_member->commissionRate()));
}

bool StaffDetailModel::save()
{
    const std::optional<double> rate = commissionRate();
    if (!rate)
        return false;
    if (m_name.trimmed().isEmpty()) {
        setErrorMessage(nameRequiredMessage());
        return false;
    }
    const bool rateEdited = rate != rateFromText(textFromRate(m_member->commissionRate()));
    const bool saved = writing([&] {
        m_member = performUnitOfWork(m_context, [&] {
            // A copy goes in, so that a failed save leaves the new member as it was.
            const Ref<StaffMember> target = isNew() ? m_member->draft<StaffMember>() : m_member;
            target->setName(m_name.trimmed());
            target->setPhone(m_phone.trimmed());
            target->setIsActive(m_isActive);
            target->setNotes(m_notes);
            if (rateEdited)
                target->setCommissionRate(*rate);
            if (isNew()) {
                target->setCreatedAt(Clock::now());
                m_context.insert(target);
            }
            return target;
        });
    });
    if (!saved)
        return false;
    // The texts now match what was saved: " Efua " is shown as "Efua".
    readFields();
    Q_EMIT fieldsChanged();
    return true;
}

void StaffDetailModel::discardEdits()
{
    readFields();
    Q_EMIT fieldsChanged();
}

bool StaffDetailModel::deleteMember()
{
    if (isNew())
        return true;
    return saveOrUndo(m_context, [this] { m_context.remove(m_member); });
}

void StaffDetailModel::readFields()
{
    m_name = m_member->name();
    m_phone = m_member->phone();
    m_isActive = m_member->isActive();
    m_notes = m_member->notes();
    m_commissionText = textFromRate(m_member->commissionRate());
}

void StaffDetailModel::refresh()
{
    m_thisMonth = CommissionRow{};
    m_upcoming.clear();
    m_readProblem.reset();
    if (isNew())
        return;
    try {
        const QDateTime now = Clock::now();
        const QDate today = now.date();
        m_thisMonth =
            m_staff.commissionOf(*m_member, QDate(today.year(), today.month(), 1).startOfDay(), now);
        for (const Ref<Appointment>& appointment : m_staff.upcomingAppointments(*m_member))
            m_upcoming.append({AppointmentTexts::day(appointment->start().date()),
                               AppointmentTexts::timeRange(*appointment), appointment->serviceName(),
                               appointment->customerName()});
    } catch (const Refusal& refusal) {
        m_thisMonth = CommissionRow{};
        m_upcoming.clear();
        m_readProblem = refusal.description();
    }
}

QString StaffDetailModel::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

QString StaffDetailModel::servicesText() const
{
    return Quantity::format(m_thisMonth.services);
}

QString StaffDetailModel::revenueText() const
{
    return money(m_thisMonth.revenue);
}

QString StaffDetailModel::commissionEarnedText() const
{
    return money(m_thisMonth.commission);
}
