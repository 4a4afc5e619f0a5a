// Benchmarks of what the Staff and Appointments screens read on the five-year store: one member's
// commission for the month, and a day of a book kept full for five years.

#include "benchstores.h"

#include "clock/clock.h"
#include "records/posschema.h"
#include "records/records.h"
#include "staff/appointmentsviewmodel.h"
#include "staff/staffservice.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int bookingsPerDay = 20;
constexpr int bookedDays = 1826;

struct StaffBook {
    QString stylistID;
    QDateTime lastSale;
};

// On the store copy, made once per run: a stylist credited with every service line of five years,
// and a book of twenty bookings a day, shared among four people, the same five years long.
const StaffBook& staffBook()
{
    static const StaffBook book = [] {
        ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
        ModelContext& context = container.mainContext();
        QList<Ref<StaffMember>> members;
        for (const char* name : {"Efua", "Abena", "Kwame", "Yaw"}) {
            auto member = std::make_shared<StaffMember>();
            member->setName(QString::fromUtf8(name));
            member->setCommissionRate(0.1);
            context.insert(member);
            members.append(member);
        }
        context.save();
        const QString stylist = members.first()->idText();
        context.connection().execute(
            QStringLiteral("UPDATE \"SaleItem\" SET \"staffID\" = '%1', \"staffName\" = "
                           "'Efua', \"commissionRate\" = 0.1 WHERE \"productTypeRaw\" = "
                           "'service'")
                .arg(stylist));
        const QDateTime lastSale = Record::dateFromSeconds(
            context.scalar(QStringLiteral("SELECT MAX(\"timestamp\") FROM \"Sale\"")).toDouble());
        // The last week is still ahead, as a busy book is.
        const QDate firstDay = lastSale.date().addDays(7 - bookedDays);
        for (int day = 0; day < bookedDays; ++day) {
            for (int slot = 0; slot < bookingsPerDay; ++slot) {
                auto booking = std::make_shared<Appointment>();
                booking->setStart(QDateTime(firstDay.addDays(day), QTime(8, 0)).addSecs(slot / 4 * 1800));
                booking->setDurationMinutes(slot % 7 == 0 ? 45 : 30); // some run over into the next slot
                const Ref<StaffMember>& who = members[slot % 4];
                booking->setStaffID(who->id());
                booking->setStaffName(who->name());
                booking->setServiceName(QStringLiteral("Braids"));
                booking->setCustomerName(QStringLiteral("Customer %1").arg(slot));
                context.insert(booking);
            }
        }
        context.save();
        return StaffBook{stylist, lastSale};
    }();
    return book;
}

// What the Staff detail reads for a member: the month so far, and their bookings ahead.
void BM_StaffDetailThisMonth(benchmark::State& state)
{
    const StaffBook& book = staffBook();
    ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
    ModelContext& context = container.mainContext();
    StaffService staff(context);
    const Clock::Override clock(book.lastSale);
    const Ref<StaffMember> stylist = context.find<StaffMember>(QUuid(book.stylistID));
    const QDate today = book.lastSale.date();
    const QDateTime monthStart = QDate(today.year(), today.month(), 1).startOfDay();
    CommissionRow month;
    qsizetype upcoming = 0;
    for (auto _ : state) {
        month = staff.commissionOf(*stylist, monthStart, book.lastSale);
        upcoming = staff.upcomingAppointments(*stylist).size();
    }
    if (month.services <= 0)
        state.SkipWithError("the stylist did no services this month");
    state.counters["services"] = month.services;
    state.counters["upcoming"] = double(upcoming);
}
BENCHMARK(BM_StaffDetailThisMonth)->UseRealTime()->Unit(benchmark::kMillisecond);

// One day of the book as the Appointments screen lists it, with the clash of every row looked for.
void BM_AppointmentDayList(benchmark::State& state)
{
    const StaffBook& book = staffBook();
    ModelContainer container(fiveYearStoreCopy(), POSSchema::description());
    ModelContext& context = container.mainContext();
    StaffService staff(context);
    AppointmentsViewModel day(staff, context);
    day.setDay(book.lastSale.date().addDays(-900));
    qsizetype rows = 0;
    qsizetype clashes = 0;
    for (auto _ : state) {
        const QList<AppointmentRow> listed = day.page();
        rows = listed.size();
        clashes =
            std::count_if(listed.begin(), listed.end(), [](const AppointmentRow& row) { return row.clash; });
    }
    if (rows != bookingsPerDay)
        state.SkipWithError("the day's bookings were not all listed");
    state.counters["rows"] = double(rows);
    state.counters["clashes"] = double(clashes);
}
BENCHMARK(BM_AppointmentDayList)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
