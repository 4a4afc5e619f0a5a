#pragma once

#include "records/appointment.h"
#include "records/customer.h"
#include "records/product.h"
#include "records/sale.h"
#include "records/staffmember.h"
#include "selling/cart.h"
#include "selling/staffchecking.h"
#include "staff/commissionrow.h"
#include "store/modelcontext.h"

#include <QDate>
#include <QDateTime>
#include <QList>

#include <optional>

// The people who do services, what they earn, and the appointment book. Reads throw StoreError;
// refusals are StaffError.
class StaffService : public StaffChecking {
public:
    static constexpr qint64 shortestBookingMinutes = 5;
    // The editor offers no longer booking, so whatever runs into a day started the day before.
    static constexpr qint64 longestBookingMinutes = 12 * 60;

    explicit StaffService(ModelContext& context);

    // By name.
    QList<Ref<StaffMember>> activeStaff();
    QList<Ref<StaffMember>> allStaff();

    // Throws StaffError::staffMissing for the lines whose service asks who did it; never while
    // nobody is available, so a business without staff is never stopped.
    static void check(const Cart& cart, bool staffAvailable);
    // check(), with staff available while any member is active.
    void checkStaff(const Cart& cart) override;

    // Per person over the sales of [from, to] that count (voided ones don't, refunds do): highest
    // commission first, equal ones by name.
    static QList<CommissionRow> commission(const QList<Ref<Sale>>& sales, const QDateTime& from,
                                           const QDateTime& to);
    static CommissionTable commissionTable(const QList<Ref<Sale>>& sales, const QDateTime& from,
                                           const QDateTime& to);
    // The member's row of commission() over the store's sales; zeros when they did nothing then.
    CommissionRow commissionOf(const StaffMember& member, const QDateTime& from, const QDateTime& to);

    // The cart that rings the booking up: its service at the ordinary price, with its customer and
    // member. Throws StaffError when it isn't booked or its service is gone.
    Cart cart(const Appointment& appointment);
    // The other bookings in `in` that hold the same member at an overlapping time; touching ones
    // don't. A clash is only a warning.
    static QList<Ref<Appointment>> clashes(const Appointment& appointment, const QList<Ref<Appointment>>& in);
    // Copies the service, member and customer onto the booking and saves it, inserting it when new:
    // one unit of work, or part of the caller's. Throws StaffError before writing anything.
    void save(const Ref<Appointment>& appointment, const Ref<Product>& service, const Ref<StaffMember>& staff,
              const Ref<Customer>& customer);
    // Those of `in` starting on `day`, of the member when one is given, earliest first.
    static QList<Ref<Appointment>> appointments(const QDate& day, const QList<Ref<Appointment>>& in,
                                                const std::optional<QUuid>& staffID = std::nullopt);
    // Every booking that can share time with `day`: from the day before to the day after.
    QList<Ref<Appointment>> appointmentsAround(const QDate& day);
    // The member's bookings still booked and not yet over, earliest first.
    QList<Ref<Appointment>> upcomingAppointments(const StaffMember& member);
    // What can be booked: the active services, by name.
    QList<Ref<Product>> activeServices();

private:
    ModelContext& m_context;
};
