// The staff book's writes, run through the fault loop of faultscene.h.

#include "faultscene.h"

#include "staff/appointmenteditormodel.h"
#include "staff/staffdetailmodel.h"
#include "staff/staffviewmodel.h"

namespace {

Ref<StaffMember> efuaIn(FaultScene& scene)
{
    return scene.saved(FaultScene::named<StaffMember>("Efua", [](StaffMember& m) { m.setCommissionRate(0.1); }));
}

Ref<Product> haircutIn(FaultScene& scene)
{
    return scene.saved(FaultScene::named<Product>("Haircut", [](Product& p) {
        p.setSellingPrice(50);
        p.setProductType(ProductType::service);
        p.setAskForStaff(true);
    }));
}

// Tomorrow at ten: a haircut with Efua, for Kofi.
Ref<Appointment> bookingIn(FaultScene& scene)
{
    auto booking = std::make_shared<Appointment>();
    booking->setStart(QDateTime(QDate::currentDate().addDays(1), QTime(10, 0)));
    booking->setDurationMinutes(30);
    performUnitOfWork(scene.context,
                      [&] { scene.environment.staffService().save(booking, haircutIn(scene), efuaIn(scene), scene.kofi); });
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

} // namespace

TEST(Faults, AddEditAndDeleteAStaffMember)
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
                             EXPECT_EQ(scene.onDisk("StaffMember"), 1);
                             EXPECT_EQ(detail->member()->commissionRate(), 0.125);
                         }};
    });
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
    runFaultLoops("delete staff member", [](FaultScene& scene) {
        const Ref<StaffMember> efua = efuaIn(scene);
        auto detail = detailModel(scene, efua);
        return FaultPlan{through(*detail, [detail] { return detail->deleteMember(); }),
                         [efua] { EXPECT_FALSE(efua->isDeleted()); },
                         [&scene] { EXPECT_EQ(scene.onDisk("StaffMember"), 0); }};
    });
}

TEST(Faults, BookMoveAndDeleteAnAppointment)
{
    runFaultLoops("book appointment", [](FaultScene& scene) {
        auto editor = editorModel(scene, nullptr);
        editor->setServiceID(haircutIn(scene)->id());
        editor->setStaffID(efuaIn(scene)->id());
        editor->setCustomerID(scene.kofi->id());
        return FaultPlan{through(*editor, [editor] { return editor->save(); }),
                         [editor] {
                             EXPECT_TRUE(editor->isNew());
                             EXPECT_TRUE(editor->hasUnsavedEdits());
                         },
                         [&scene, editor] {
                             EXPECT_EQ(scene.onDisk("Appointment"), 1) << "tried many times, booked once";
                             EXPECT_EQ(editor->appointment()->customerName(), QStringLiteral("Kofi"));
                         }};
    });
    runFaultLoops("move appointment", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene);
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
    runFaultLoops("delete appointment", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene);
        auto editor = editorModel(scene, booking);
        return FaultPlan{through(*editor, [editor] { return editor->deleteAppointment(); }),
                         [booking] { EXPECT_FALSE(booking->isDeleted()); },
                         [&scene] { EXPECT_EQ(scene.onDisk("Appointment"), 0); }};
    });
}

TEST(Faults, CancelNoShowAndBookAgain)
{
    using Editor = AppointmentEditorModel;
    const struct {
        const char* name;
        AppointmentStatus from;
        bool (Editor::*change)();
        AppointmentStatus to;
    } changes[] = {
        {"cancel appointment", AppointmentStatus::booked, &Editor::cancelAppointment, AppointmentStatus::cancelled},
        {"mark no-show", AppointmentStatus::booked, &Editor::markNoShow, AppointmentStatus::noShow},
        {"book again", AppointmentStatus::noShow, &Editor::bookAgain, AppointmentStatus::booked},
    };
    for (const auto& c : changes) {
        runFaultLoops(c.name, [&c](FaultScene& scene) {
            const Ref<Appointment> booking = bookingIn(scene);
            performUnitOfWork(scene.context, [&] { booking->setStatus(c.from); });
            auto editor = editorModel(scene, booking);
            return FaultPlan{through(*editor, [editor, change = c.change] { return ((*editor).*change)(); }),
                             [booking, from = c.from] { EXPECT_EQ(booking->status(), from); },
                             [booking, to = c.to] { EXPECT_EQ(booking->status(), to); }};
        });
    }
}

TEST(Faults, CompleteAppointmentAtCheckout)
{
    runFaultLoops("complete appointment at checkout", [](FaultScene& scene) {
        const Ref<Appointment> booking = bookingIn(scene);
        const Cart cart = scene.environment.staffService().cart(*booking);
        return FaultPlan{refused([&scene, cart] {
                             scene.environment.salesService().checkout(cart, {{PaymentMethodType::card, 50, 0, {}}},
                                                                       scene.cashier, nullptr, *scene.settings);
                         }),
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
