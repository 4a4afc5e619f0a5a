// The staff book's writes, failed at each of their calls into SQLite in turn: each failure must show
// a plain sentence and leave file, memory and what was typed as they were, and the write must then
// go through when tried again.

#include "faultscene.h"

#include "staff/appointmenteditormodel.h"
#include "staff/staffdetailmodel.h"
#include "staff/staffviewmodel.h"

namespace {

Ref<StaffMember> efuaIn(FaultScene& scene)
{
    auto efua = std::make_shared<StaffMember>();
    efua->setName(QStringLiteral("Efua"));
    efua->setCommissionRate(0.1);
    return scene.saved(efua);
}

Ref<Product> haircutIn(FaultScene& scene)
{
    auto haircut = std::make_shared<Product>();
    haircut->setName(QStringLiteral("Haircut"));
    haircut->setSellingPrice(50);
    haircut->setProductType(ProductType::service);
    haircut->setAskForStaff(true);
    return scene.saved(haircut);
}

// Tomorrow at ten with Efua, for Kofi.
Ref<Appointment> bookingIn(FaultScene& scene, const Ref<Product>& service, const Ref<StaffMember>& staff)
{
    auto booking = std::make_shared<Appointment>();
    booking->setStart(QDateTime(QDate::currentDate().addDays(1), QTime(10, 0)));
    booking->setDurationMinutes(30);
    performUnitOfWork(scene.context,
                      [&] { scene.environment.staffService().save(booking, service, staff, scene.kofi); });
    return booking;
}

std::shared_ptr<StaffDetailModel> detailModel(FaultScene& scene, const Ref<StaffMember>& member)
{
    return std::make_shared<StaffDetailModel>(scene.environment.staffService(), scene.context, scene.session,
                                              member);
}

std::shared_ptr<AppointmentEditorModel> editorModel(FaultScene& scene, const Ref<Appointment>& booking)
{
    return std::make_shared<AppointmentEditorModel>(scene.environment.staffService(), scene.context, booking,
                                                    QDate::currentDate().addDays(1));
}

// A change of status from the editor, tried until it goes through.
FaultPlan statusChange(FaultScene& scene, AppointmentStatus from, bool (AppointmentEditorModel::*change)(),
                       AppointmentStatus to)
{
    const Ref<Appointment> booking = bookingIn(scene, haircutIn(scene), efuaIn(scene));
    performUnitOfWork(scene.context, [&] { booking->setStatus(from); });
    auto editor = editorModel(scene, booking);
    return FaultPlan{through(*editor, [editor, change] { return ((*editor).*change)(); }),
                     [booking, from] { EXPECT_EQ(booking->status(), from); },
                     [booking, to] { EXPECT_EQ(booking->status(), to); }};
}

} // namespace

TEST(Faults, AddStaffMember)
{
    runFaultLoops("add staff member", [](FaultScene& scene) {
        auto detail = detailModel(scene, StaffViewModel::addStaffMember());
        detail->setName(QStringLiteral("Abena"));
        detail->setCommissionText(QStringLiteral("12.5"));
        return FaultPlan{through(*detail, [detail] { return detail->save(); }),
                         [detail] {
                             EXPECT_TRUE(detail->isNew());
                             EXPECT_EQ(detail->commissionText(), QStringLiteral("12.5"));
                         },
                         [&scene, detail] {
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("StaffMember")), 1);
                             EXPECT_EQ(detail->member()->commissionRate(), 0.125);
                         }};
    });
}

TEST(Faults, EditAndDeactivateStaffMember)
{
    runFaultLoops("edit and deactivate staff member", [](FaultScene& scene) {
        const Ref<StaffMember> efua = efuaIn(scene);
        auto detail = detailModel(scene, efua);
        detail->setCommissionText(QStringLiteral("15"));
        detail->setActive(false);
        return FaultPlan{through(*detail, [detail] { return detail->save(); }),
                         [efua, detail] {
                             EXPECT_TRUE(efua->isActive());
                             EXPECT_EQ(efua->commissionRate(), 0.1);
                             EXPECT_TRUE(detail->hasUnsavedEdits());
                         },
                         [efua] {
                             EXPECT_FALSE(efua->isActive());
                             EXPECT_EQ(efua->commissionRate(), 0.15);
                         }};
    });
}

TEST(Faults, DeleteStaffMember)
{
    runFaultLoops("delete staff member", [](FaultScene& scene) {
        const Ref<StaffMember> efua = efuaIn(scene);
        auto detail = detailModel(scene, efua);
        return FaultPlan{
            through(*detail, [detail] { return detail->deleteMember(); }),
            [efua] { EXPECT_FALSE(efua->isDeleted()); },
            [&scene] { EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("StaffMember")), 0); }};
    });
}

TEST(Faults, BookAppointment)
{
    runFaultLoops("book appointment", [](FaultScene& scene) {
        const Ref<Product> haircut = haircutIn(scene);
        const Ref<StaffMember> efua = efuaIn(scene);
        auto editor = editorModel(scene, nullptr);
        editor->setServiceID(haircut->id());
        editor->setStaffID(efua->id());
        editor->setCustomerID(scene.kofi->id());
        return FaultPlan{through(*editor, [editor] { return editor->save(); }),
                         [editor] {
                             EXPECT_TRUE(editor->isNew());
                             EXPECT_TRUE(editor->hasUnsavedEdits());
                         },
                         [&scene, editor] {
                             // Tried many times, booked once.
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("Appointment")), 1);
                             EXPECT_EQ(editor->appointment()->customerName(), QStringLiteral("Kofi"));
                         }};
    });
}

TEST(Faults, MoveAppointment)
{
    runFaultLoops("move appointment", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene, haircutIn(scene), efuaIn(scene));
        const QDateTime booked = booking->start();
        auto editor = editorModel(scene, booking);
        editor->setStart(booked.addSecs(3600));
        editor->setStaffID(std::nullopt);
        return FaultPlan{through(*editor, [editor] { return editor->save(); }),
                         [booking, booked, editor] {
                             EXPECT_EQ(booking->start(), booked);
                             EXPECT_EQ(booking->staffName(), QStringLiteral("Efua"));
                             EXPECT_EQ(editor->start(), booked.addSecs(3600)) << "what was typed stays";
                         },
                         [booking, booked] {
                             EXPECT_EQ(booking->start(), booked.addSecs(3600));
                             EXPECT_EQ(booking->staffID(), std::nullopt);
                         }};
    });
}

TEST(Faults, CancelAppointment)
{
    runFaultLoops("cancel appointment", [](FaultScene& scene) {
        return statusChange(scene, AppointmentStatus::booked, &AppointmentEditorModel::cancelAppointment,
                            AppointmentStatus::cancelled);
    });
}

TEST(Faults, MarkNoShow)
{
    runFaultLoops("mark no-show", [](FaultScene& scene) {
        return statusChange(scene, AppointmentStatus::booked, &AppointmentEditorModel::markNoShow,
                            AppointmentStatus::noShow);
    });
}

TEST(Faults, BookAgain)
{
    runFaultLoops("book again", [](FaultScene& scene) {
        return statusChange(scene, AppointmentStatus::noShow, &AppointmentEditorModel::bookAgain,
                            AppointmentStatus::booked);
    });
}

TEST(Faults, DeleteAppointment)
{
    runFaultLoops("delete appointment", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene, haircutIn(scene), efuaIn(scene));
        auto editor = editorModel(scene, booking);
        return FaultPlan{
            through(*editor, [editor] { return editor->deleteAppointment(); }),
            [booking] { EXPECT_FALSE(booking->isDeleted()); },
            [&scene] { EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("Appointment")), 0); }};
    });
}

TEST(Faults, CompleteAppointmentAtCheckout)
{
    runFaultLoops("complete appointment at checkout", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene, haircutIn(scene), efuaIn(scene));
        const Cart cart = scene.environment.staffService().cart(*booking);
        const auto checkout = [&scene, cart]() -> std::optional<QString> {
            try {
                scene.environment.salesService().checkout(cart, {{PaymentMethodType::card, 50, 0, {}}},
                                                          scene.cashier, nullptr, *scene.settings);
                return std::nullopt;
            } catch (const Refusal& refusal) {
                return refusal.description();
            }
        };
        return FaultPlan{checkout,
                         [booking] {
                             // Still bookable: the sale that would have paid for it is gone.
                             EXPECT_EQ(booking->status(), AppointmentStatus::booked);
                             EXPECT_EQ(booking->saleInvoiceNumber(), QString());
                         },
                         [booking] {
                             EXPECT_EQ(booking->status(), AppointmentStatus::completed);
                             EXPECT_FALSE(booking->saleInvoiceNumber().isEmpty());
                         }};
    });
}
