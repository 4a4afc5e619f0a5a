#include "staffscene.h"

#include "staff/stafferror.h"

namespace {

using AppointmentBookTest = StaffScene;

} // namespace

TEST_F(AppointmentBookTest, ClashesNeedTheSamePersonAndOverlappingTime)
{
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<StaffMember> ama = member("Ama", 0.1);
    const Ref<Appointment> tenToHalfPast = booking(10, 0, 30, efua);
    const struct {
        const char* name;
        int hour, minute;
        qint64 minutes;
        Ref<StaffMember> who;
        bool clashes;
    } cases[] = {
        {"ends as the other begins", 9, 30, 30, efua, false},
        {"begins as the other ends", 10, 30, 30, efua, false},
        {"one minute over its start", 9, 31, 30, efua, true},
        {"one minute over its end", 10, 29, 30, efua, true},
        {"inside it", 10, 10, 5, efua, true},
        {"around it", 9, 0, 120, efua, true},
        {"another person at the same time", 10, 0, 30, ama, false},
        {"nobody at the same time", 10, 0, 30, nullptr, false},
    };
    for (const auto& c : cases) {
        const Ref<Appointment> other = booking(c.hour, c.minute, c.minutes, c.who);
        const QList<Ref<Appointment>> all{tenToHalfPast, other};
        EXPECT_EQ(!StaffService::clashes(*other, all).isEmpty(), c.clashes) << c.name;
        EXPECT_EQ(!StaffService::clashes(*tenToHalfPast, all).isEmpty(), c.clashes)
            << c.name << ", seen the other way";
    }

    // Only a booking that still holds its time clashes, and never with itself.
    const Ref<Appointment> cancelled = booking(10, 0, 30, efua, AppointmentStatus::cancelled);
    const Ref<Appointment> noShow = booking(10, 0, 30, efua, AppointmentStatus::noShow);
    const Ref<Appointment> completed = booking(10, 0, 30, efua, AppointmentStatus::completed);
    EXPECT_TRUE(
        StaffService::clashes(*tenToHalfPast, {tenToHalfPast, cancelled, noShow, completed}).isEmpty());
    EXPECT_EQ(StaffService::clashes(*cancelled, {tenToHalfPast, cancelled}).size(), 1)
        << "a cancelled one booked again would clash";
}

TEST_F(AppointmentBookTest, SaveChecksThenCopiesServiceMemberAndCustomer)
{
    const Ref<Product> haircut = service("Haircut", 50);
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<Customer> kofi = customer("Kofi Mensah", "024 111 2222");
    const auto fresh = [](qint64 minutes) {
        auto made = std::make_shared<Appointment>();
        made->setDurationMinutes(minutes);
        made->setCustomerName(QStringLiteral("typed"));
        return made;
    };
    EXPECT_EQ(refusalOf([&] { staff.save(fresh(4), haircut, efua, nullptr); }),
              "An appointment lasts at least 5 minutes.");
    EXPECT_EQ(refusalOf([&] { staff.save(fresh(30), nullptr, efua, nullptr); }),
              "Choose the service being booked.");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Appointment")), 0);

    const Ref<Appointment> walkIn = fresh(5);
    staff.save(walkIn, haircut, nullptr, nullptr);
    EXPECT_EQ(walkIn->serviceName(), "Haircut");
    EXPECT_EQ(walkIn->customerName(), "typed") << "a walk-in keeps what was typed";

    staff.save(walkIn, haircut, efua, kofi);
    EXPECT_EQ(walkIn->staffName(), "Efua");
    EXPECT_EQ(walkIn->customerName(), "Kofi Mensah");
    EXPECT_EQ(walkIn->customerPhone(), "024 111 2222");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Appointment")), 1) << "saved again, not twice";
    EXPECT_FALSE(context.hasChanges());
}

TEST_F(AppointmentBookTest, RingUpBuildsTheCartOrSaysWhyNot)
{
    const Ref<Product> haircut = service("Haircut", 50);
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<Customer> kofi = customer("Kofi");
    const auto bookingFor = [&](const Ref<Product>& what, const Ref<StaffMember>& who,
                                AppointmentStatus status = AppointmentStatus::booked) {
        const Ref<Appointment> made = booking(11, 0, 30, who, status);
        change([&] {
            made->setServiceID(what ? std::optional(what->id()) : std::nullopt);
            made->setServiceName(what ? what->name() : QString());
            made->setCustomerID(kofi->id());
        });
        return made;
    };
    EXPECT_EQ(refusalOf([&] { staff.cart(*bookingFor(haircut, efua, AppointmentStatus::completed)); }),
              "This appointment is Completed, so it can't be rung up.");
    EXPECT_EQ(
        refusalOf([&] { staff.cart(*bookingFor(nullptr, efua)); }),
        "The service is no longer in Products, so it can't be rung up. Add the service to the sale by hand.");
    const Ref<Product> braids = service("Braids", 120);
    const Ref<Appointment> braidsBooked = bookingFor(braids, efua);
    change([&] { context.remove(braids); });
    EXPECT_EQ(
        refusalOf([&] { staff.cart(*braidsBooked); }),
        "Braids is no longer in Products, so it can't be rung up. Add the service to the sale by hand.");

    // Efua's rate today, not the day it was booked.
    const Ref<Appointment> booked = bookingFor(haircut, efua);
    change([&] { efua->setCommissionRate(0.2); });
    const Cart cart = staff.cart(*booked);
    ASSERT_EQ(cart.lines().size(), 1);
    EXPECT_EQ(cart.lines()[0].grossAmount(), 50);
    EXPECT_EQ(cart.lines()[0].staffCommissionRate, 0.2);
    EXPECT_EQ(cart.customer(), kofi);
    EXPECT_EQ(cart.appointmentID(), booked->id());

    // Paid: the booking is done, under the sale's number, in the same save.
    EXPECT_EQ(booked->saleInvoiceNumber(), payCard(cart)->invoiceNumber());
    EXPECT_FALSE(context.hasChanges());

    // Member and customer gone since: the line still names who did it, at no rate of theirs.
    const Ref<Appointment> orphan = bookingFor(haircut, efua);
    change([&] {
        context.remove(efua);
        context.remove(kofi);
    });
    const Cart orphanCart = staff.cart(*orphan);
    EXPECT_EQ(orphanCart.customer(), nullptr);
    EXPECT_EQ(orphanCart.lines()[0].staffID, orphan->staffID());
    EXPECT_EQ(orphanCart.lines()[0].staffName, "Efua");
    EXPECT_EQ(orphanCart.lines()[0].staffCommissionRate, 0);
}
