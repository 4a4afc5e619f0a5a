#include "staffscene.h"

#include "staff/appointmenteditormodel.h"
#include "staff/appointmentsviewmodel.h"
#include "staff/staffdetailmodel.h"
#include "staff/staffviewmodel.h"
#include "startup/sessionstore.h"

namespace {

struct StaffModelsTest : StaffScene {
    SessionStore session;

    std::unique_ptr<StaffDetailModel> detailOf(const Ref<StaffMember>& member)
    {
        return std::make_unique<StaffDetailModel>(staff, context, session, member);
    }
    std::unique_ptr<AppointmentEditorModel> editorOf(const Ref<Appointment>& appointment)
    {
        return std::make_unique<AppointmentEditorModel>(staff, context, appointment, now.date().addDays(1));
    }
};

} // namespace

TEST_F(StaffModelsTest, CommissionIsTypedAsAPercentageAndKeptWithinZeroToAHundred)
{
    const struct {
        const char* typed;
        std::optional<double> rate;
    } cases[] = {{"12.5", 0.125}, {" 7,5 % ", 0.075}, {"-5", 0},          {"250", 1},
                 {"99.5", 0.995}, {"", std::nullopt},  {"ten", std::nullopt}, {"1e2", std::nullopt}};
    for (const auto& c : cases)
        EXPECT_EQ(StaffDetailModel::rateFromText(QString::fromUtf8(c.typed)), c.rate)
            << '"' << c.typed << '"';
    EXPECT_EQ(StaffDetailModel::textFromRate(0.125), "12.5");
}

TEST_F(StaffModelsTest, ANewMemberIsSavedOnceWithItsRateAndTextThatIsntANumberIsRefused)
{
    auto detail = detailOf(StaffViewModel::addStaffMember());
    EXPECT_FALSE(detail->hasUnsavedEdits()) << "nobody typed yet";
    detail->setName(QStringLiteral("  Efua Owusu "));
    detail->setCommissionText(QStringLiteral("ten"));
    EXPECT_EQ(detail->commissionProblem(), "Enter a percentage such as 10.");
    EXPECT_FALSE(detail->save());
    EXPECT_EQ(context.count<StaffMember>(), 0);

    detail->setCommissionText(QStringLiteral("12.5"));
    ASSERT_TRUE(detail->save());
    EXPECT_EQ(detail->member()->createdAt(), now);
    EXPECT_EQ(detail->name(), "Efua Owusu") << "the field shows what was saved";
    ASSERT_TRUE(detail->save());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("StaffMember")), 1);

    detail->setName(QStringLiteral(" "));
    EXPECT_FALSE(detail->save());
    EXPECT_EQ(detail->errorMessage(), "Enter the staff member's name.");
    EXPECT_EQ(detail->member()->name(), "Efua Owusu");
}

TEST_F(StaffModelsTest, ARateKeptFinerThanShownIsNoEditAndSurvivesOtherEdits)
{
    const Ref<StaffMember> efua = member("Efua", 0.123456);
    auto detail = detailOf(efua);
    EXPECT_EQ(detail->commissionText(), "12.35");
    EXPECT_FALSE(detail->hasUnsavedEdits());
    detail->setPhone(QStringLiteral("020 555 1234"));
    ASSERT_TRUE(detail->save());
    EXPECT_EQ(efua->commissionRate(), 0.123456);
    detail->setCommissionText(QStringLiteral("12.35 %"));
    EXPECT_FALSE(detail->hasUnsavedEdits());
    detail->setCommissionText(QStringLiteral("15"));
    EXPECT_TRUE(detail->hasUnsavedEdits());
    detail->discardEdits();
    EXPECT_EQ(detail->commissionText(), "12.35");
}

TEST_F(StaffModelsTest, ThisMonthAndUpcomingAreTheMembersOwn)
{
    session.setSettings(settings);
    change([&] { settings->setCurrencySymbol(QStringLiteral("GH₵")); });
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<Product> braids = service("Braids", 200);
    Cart cart;
    cart.addOrIncrement(braids, 1.5);
    cart.setStaff(cart.lines()[0].id, efua);
    payCard(cart);
    now = now.addMonths(-1);
    payCard(cart); // last month's
    now = now.addMonths(1);
    const Ref<Appointment> later = booking(14, 0, 45, efua);
    change([&] { later->setCustomerName(QStringLiteral("Kofi")); });

    auto detail = detailOf(efua);
    detail->refresh();
    EXPECT_EQ(detail->servicesText(), "1.5");
    EXPECT_EQ(detail->revenueText(), "GH₵300.00");
    EXPECT_EQ(detail->commissionEarnedText(), "GH₵30.00");
    ASSERT_EQ(detail->upcoming().size(), 1);
    const UpcomingAppointmentRow& row = detail->upcoming()[0];
    EXPECT_EQ(QStringList({row.day, row.time, row.service, row.customer}),
              (QStringList{"Tue, Mar 10", "2:00 PM–2:45 PM", "Haircut", "Kofi"}));
}

TEST_F(StaffModelsTest, TheListSearchesNameAndPhoneAndShowsEachRate)
{
    member("Efua", 0.1);
    const Ref<StaffMember> kwame = member("Kwame", 0.125, false);
    change([&] { kwame->setPhone(QStringLiteral("024 700 1000")); });
    StaffViewModel list(staff, context);
    QList<StaffRow> rows = list.rows();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].rateText, "12.5% commission");
    EXPECT_TRUE(rows[1].isInactive);
    for (const char* search : {"KWA", "700 1"}) {
        list.setSearchText(QString::fromUtf8(search));
        rows = list.rows();
        ASSERT_EQ(rows.size(), 1) << search;
        EXPECT_EQ(rows[0].name, "Kwame") << search;
    }
}

TEST_F(StaffModelsTest, DayRowsWarnOfClashesWithBookingsTheFilterHides)
{
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<StaffMember> ama = member("Ama", 0.1);
    const Ref<Appointment> late = booking(23, 30, 60, efua, AppointmentStatus::booked, -1);
    const Ref<Appointment> first = booking(0, 15, 30, efua);
    change([&] { first->setCustomerName(QStringLiteral("Kofi")); });
    booking(11, 0, 30, ama, AppointmentStatus::completed);
    booking(11, 0, 30, nullptr, AppointmentStatus::cancelled);

    AppointmentsViewModel day(staff, context);
    EXPECT_EQ(day.day(), now.date());
    QList<AppointmentRow> rows = day.rows();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].timeRange, "12:15 AM–12:45 AM");
    EXPECT_EQ(rows[0].service, "Haircut with Efua");
    EXPECT_EQ(rows[0].customer, "Kofi");
    EXPECT_EQ(rows[0].clash, "Overlaps another booking for Efua")
        << "with last night's, not on this day's list";
    EXPECT_EQ(rows[1].status, "Completed");
    EXPECT_EQ(rows[2].service, "Haircut") << "nobody named";
    EXPECT_EQ(rows[2].status, "Cancelled");
    EXPECT_EQ(rows[2].clash, std::nullopt);

    day.setStaffFilter(ama->id());
    rows = day.rows();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].service, "Haircut with Ama");

    day.showPreviousDay();
    day.setStaffFilter(std::nullopt);
    ASSERT_EQ(day.rows().size(), 1);
    EXPECT_EQ(day.rows()[0].appointment, late);
    day.showToday();
    EXPECT_EQ(day.day(), now.date());
}

TEST_F(StaffModelsTest, ANewBookingStartsAtNineForHalfAnHourAndIsMadeOnce)
{
    const Ref<Product> haircut = service("Haircut", 50);
    const Ref<StaffMember> efua = member("Efua", 0.1);
    auto editor = editorOf(nullptr);
    EXPECT_EQ(editor->start(), QDateTime(now.date().addDays(1), QTime(9, 0)));
    EXPECT_EQ(editor->durationMinutes(), 30);
    EXPECT_FALSE(editor->hasUnsavedEdits());

    editor->setStaffID(efua->id());
    editor->setWalkInName(QStringLiteral("  Yaw  "));
    EXPECT_FALSE(editor->save()) << "no service yet";
    editor->setServiceID(haircut->id());
    ASSERT_TRUE(editor->save());
    ASSERT_NE(editor->appointment(), nullptr);
    EXPECT_EQ(editor->appointment()->customerName(), "Yaw");
    EXPECT_EQ(editor->appointment()->staffName(), "Efua");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Appointment")), 1);
}

TEST_F(StaffModelsTest, TheEditorWarnsOfAClashWithTheChosenValuesButNotWithItself)
{
    const Ref<Product> haircut = service("Haircut", 50);
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<Appointment> braids = booking(10, 0, 60, efua, AppointmentStatus::booked, 1);
    change([&] { braids->setServiceName(QStringLiteral("Braids")); });

    auto editor = editorOf(braids);
    EXPECT_EQ(editor->clashWarning(), std::nullopt);
    auto other = editorOf(nullptr);
    other->setServiceID(haircut->id());
    other->setStart(QDateTime(now.date().addDays(1), QTime(10, 30)));
    EXPECT_EQ(other->clashWarning(), std::nullopt) << "nobody chosen yet";
    other->setStaffID(efua->id());
    EXPECT_EQ(other->clashWarning(), "Efua already has Braids at 10:00 AM. You can still save.");
    other->setStart(QDateTime(now.date().addDays(1), QTime(11, 0)));
    EXPECT_EQ(other->clashWarning(), std::nullopt);
    other->setDurationMinutes(5);
    other->setStart(QDateTime(now.date().addDays(1), QTime(9, 55)));
    EXPECT_EQ(other->clashWarning(), std::nullopt) << "ends as Braids begins";
}

TEST_F(StaffModelsTest, OnlyABookedOneIsEditedAndACompletedOneShowsItsSale)
{
    const Ref<Product> haircut = service("Haircut", 50);
    const Ref<Customer> kofi = customer("Kofi", "024 000 0000");
    const Ref<Appointment> booked = booking(10, 0, 30);
    change([&] {
        booked->setServiceID(haircut->id());
        booked->setCustomerID(kofi->id());
        booked->setCustomerName(kofi->name());
    });
    auto editor = editorOf(booked);
    EXPECT_EQ(editor->customerID(), kofi->id());
    EXPECT_EQ(editor->walkInName(), QString()) << "a customer's name is theirs, not typed";

    // The status moves themselves are checked by the fault loop.
    editor->setNotes(QStringLiteral("bring photos"));
    ASSERT_TRUE(editor->cancelAppointment());
    EXPECT_EQ(booked->notes(), QString()) << "what was typed goes with the booking";
    editor->setNotes(QStringLiteral("again"));
    EXPECT_FALSE(editor->hasUnsavedEdits()) << "a cancelled booking isn't edited";

    change([&] {
        booked->setStatus(AppointmentStatus::completed);
        booked->setSaleInvoiceNumber(QStringLiteral("INV-20260310-0001"));
    });
    EXPECT_EQ(editorOf(booked)->subtitle(), "Completed · INV-20260310-0001");
}
