#include "staff/staffservice.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/quantity.h"
#include "records/saleitem.h"
#include "staff/stafferror.h"
#include "store/unitofwork.h"

#include <QHash>

#include <algorithm>

namespace {

// The lines of one period added up per person: by id, or by the name alone where a line kept no id.
QList<CommissionRow> addUp(const QList<Ref<SaleItem>>& items)
{
    QList<CommissionRow> rows;
    QHash<QString, qsizetype> rowOfKey;
    for (const Ref<SaleItem>& item : items) {
        const std::optional<QUuid> staffID = item->staffID();
        if (!staffID && item->staffName().isEmpty())
            continue;
        const QString key = staffID ? Record::uuidText(*staffID) : item->staffName();
        auto found = rowOfKey.constFind(key);
        if (found == rowOfKey.constEnd()) {
            found = rowOfKey.insert(key, rows.size());
            rows.append(CommissionRow{staffID, item->staffName()});
        }
        CommissionRow& row = rows[*found];
        row.services += item->quantity();
        row.revenue += item->lineTotal() - item->taxAmount();
        row.commission += item->commission();
    }
    std::stable_sort(rows.begin(), rows.end(), [](const CommissionRow& a, const CommissionRow& b) {
        if (a.commission != b.commission)
            return a.commission > b.commission;
        return a.staffName < b.staffName;
    });
    return rows;
}

} // namespace

StaffService::StaffService(ModelContext& context)
    : m_context(context)
{
}

QList<Ref<StaffMember>> StaffService::activeStaff()
{
    return m_context.fetch<StaffMember>(
        FetchDescriptor(StaffMember::Col::isActive == true).sortedBy(ascending(StaffMember::Col::name)));
}

QList<Ref<StaffMember>> StaffService::allStaff()
{
    return m_context.fetch<StaffMember>(FetchDescriptor().sortedBy(ascending(StaffMember::Col::name)));
}

void StaffService::check(const Cart& cart, bool staffAvailable)
{
    const QList<CartLine> missing = cart.linesMissingStaff(staffAvailable);
    if (missing.isEmpty())
        return;
    QStringList names;
    for (const CartLine& line : missing)
        names << line.product->name();
    throw StaffError::staffMissing(names);
}

void StaffService::checkStaff(const Cart& cart)
{
    // Most sales have no line that asks, and need no count of the staff.
    if (cart.linesMissingStaff(true).isEmpty())
        return;
    check(cart, m_context.count<StaffMember>(StaffMember::Col::isActive == true) > 0);
}

QList<CommissionRow> StaffService::commission(const QList<Ref<Sale>>& sales, const QDateTime& from,
                                              const QDateTime& to)
{
    QList<Ref<SaleItem>> items;
    for (const Ref<Sale>& sale : sales) {
        // A voided sale takes its commission out of every period; a refund subtracts in its own.
        if (sale->isVoided() || sale->timestamp() < from || sale->timestamp() > to)
            continue;
        items.append(sale->items());
    }
    return addUp(items);
}

CommissionTable StaffService::commissionTable(const QList<Ref<Sale>>& sales, const QDateTime& from,
                                              const QDateTime& to)
{
    const auto money = [](double amount) { return Currency::format(amount, Currency::fixedSign); };
    CommissionTable table{{QStringLiteral("Staff"), QStringLiteral("Services"),
                           QStringLiteral("Revenue (ex tax)"), QStringLiteral("Commission")},
                          {}};
    CommissionRow total;
    for (const CommissionRow& row : commission(sales, from, to)) {
        table.rows.append(
            {row.staffName, Quantity::format(row.services), money(row.revenue), money(row.commission)});
        total.services += row.services;
        total.revenue += row.revenue;
        total.commission += row.commission;
    }
    if (!table.rows.isEmpty())
        table.rows.append({QStringLiteral("Total"), Quantity::format(total.services), money(total.revenue),
                           money(total.commission)});
    return table;
}

CommissionRow StaffService::commissionOf(const StaffMember& member, const QDateTime& from,
                                         const QDateTime& to)
{
    // Only the member's own lines are loaded, found through the dates of the sales that count.
    const Condition inPeriod(
        QStringLiteral(
            "\"sale\" IN (SELECT \"id\" FROM \"Sale\" WHERE \"timestamp\" >= ? AND \"timestamp\" <= ? "
            "AND \"statusRaw\" != ?)"),
        {toStoredValue(from), toStoredValue(to), SaleStatuses::raw(SaleStatus::voided)});
    const QList<CommissionRow> rows =
        addUp(m_context.fetch<SaleItem>(FetchDescriptor(SaleItem::Col::staffID == member.id() && inPeriod)));
    return rows.isEmpty() ? CommissionRow{member.id(), member.name()} : rows.first();
}

Cart StaffService::cart(const Appointment& appointment)
{
    if (!appointment.isBooked())
        throw StaffError::appointmentNotBooked(AppointmentStatuses::title(appointment.status()));
    const QString serviceName =
        appointment.serviceName().isEmpty() ? QStringLiteral("The service") : appointment.serviceName();
    const std::optional<QUuid> serviceID = appointment.serviceID();
    const Ref<Product> service = serviceID ? m_context.find<Product>(*serviceID) : nullptr;
    if (!service)
        throw StaffError::serviceMissing(serviceName);

    Cart cart;
    // A customer deleted since the booking is no reason to refuse it.
    if (const std::optional<QUuid> customerID = appointment.customerID())
        if (const Ref<Customer> customer = m_context.find<Customer>(*customerID))
            cart.setCustomer(customer);
    const std::optional<QUuid> staffID = appointment.staffID();
    const Ref<StaffMember> member = staffID ? m_context.find<StaffMember>(*staffID) : nullptr;
    if (member || appointment.staffName().isEmpty()) {
        cart.addOrIncrement(service, 1);
        // At the member's rate of today, not of the day it was booked.
        if (member)
            cart.setStaff(cart.lines().first().id, member);
    } else {
        // The member is gone: the line still says who did it, and earns nothing by their rate.
        CartLine line;
        line.product = service;
        line.quantity = 1;
        line.staffID = staffID;
        line.staffName = appointment.staffName();
        cart.appendLine(line);
    }
    cart.setAppointmentID(appointment.id());
    return cart;
}

QList<Ref<Appointment>> StaffService::clashes(const Appointment& appointment,
                                              const QList<Ref<Appointment>>& in)
{
    QList<Ref<Appointment>> found;
    // Bookings without a person never clash.
    if (!appointment.staffID())
        return found;
    const QDateTime start = appointment.start();
    const QDateTime end = appointment.end();
    for (const Ref<Appointment>& other : in) {
        if (other->id() != appointment.id() && other->isBooked() &&
            other->staffID() == appointment.staffID() && other->start() < end && start < other->end())
            found.append(other);
    }
    return found;
}

void StaffService::save(const Ref<Appointment>& appointment, const Ref<Product>& service,
                        const Ref<StaffMember>& staff, const Ref<Customer>& customer)
{
    if (!service)
        throw StaffError::appointmentNeedsService();
    if (appointment->durationMinutes() < shortestBookingMinutes)
        throw StaffError::invalidDuration();
    performUnitOfWork(m_context, [&] {
        appointment->setServiceID(service->id());
        appointment->setServiceName(service->name());
        appointment->setStaffID(staff ? std::optional(staff->id()) : std::nullopt);
        appointment->setStaffName(staff ? staff->name() : QString());
        appointment->setCustomerID(customer ? std::optional(customer->id()) : std::nullopt);
        if (customer) {
            appointment->setCustomerName(customer->name());
            appointment->setCustomerPhone(customer->phone());
        }
        if (!appointment->context())
            m_context.insert(appointment);
    });
}

QList<Ref<Appointment>> StaffService::appointments(const QDate& day, const QList<Ref<Appointment>>& in,
                                                   const std::optional<QUuid>& staffID)
{
    QList<Ref<Appointment>> found;
    for (const Ref<Appointment>& appointment : in) {
        if (appointment->start().date() == day && (!staffID || appointment->staffID() == staffID))
            found.append(appointment);
    }
    std::stable_sort(found.begin(), found.end(), [](const Ref<Appointment>& a, const Ref<Appointment>& b) {
        return a->start() < b->start();
    });
    return found;
}

QList<Ref<Appointment>> StaffService::appointmentsAround(const QDate& day)
{
    return m_context.fetch<Appointment>(
        FetchDescriptor(Appointment::Col::start >= day.addDays(-1).startOfDay() &&
                        Appointment::Col::start < day.addDays(2).startOfDay())
            .sortedBy(ascending(Appointment::Col::start)));
}

QList<Ref<Appointment>> StaffService::upcomingAppointments(const StaffMember& member)
{
    const QDateTime now = Clock::now();
    const QList<Ref<Appointment>> recent = m_context.fetch<Appointment>(
        FetchDescriptor(Appointment::Col::staffID == member.id() &&
                        Appointment::Col::start > now.addSecs(-longestBookingMinutes * 60))
            .sortedBy(ascending(Appointment::Col::start)));
    QList<Ref<Appointment>> upcoming;
    for (const Ref<Appointment>& appointment : recent) {
        if (appointment->isBooked() && appointment->end() > now)
            upcoming.append(appointment);
    }
    return upcoming;
}

QList<Ref<Product>> StaffService::activeServices()
{
    return m_context.fetch<Product>(
        FetchDescriptor(Product::Col::productTypeRaw == ProductTypes::raw(ProductType::service) &&
                        Product::Col::isActive == true)
            .sortedBy(ascending(Product::Col::name)));
}
