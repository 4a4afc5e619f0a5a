#include "ui/appointments/appointmentsview.h"

#include "clock/clock.h"
#include "records/records.h"
#include "store/unitofwork.h"
#include "ui/appointments/appointmenteditor.h"
#include "ui/appointments/appointmentrowdelegate.h"
#include "ui/controls/screentest.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>

namespace {
QStringList shownButtons(AppointmentEditor* editor)
{
    QStringList shown;
    for (QPushButton* button : {editor->deleteButton(), editor->noShowButton(), editor->cancelButton(),
                                editor->bookAgainButton(), editor->bookButton()})
        if (button->isVisibleTo(editor))
            shown << button->text();
    return shown;
}
using AppointmentsViewTest = ScreenTest;
} // namespace

// A cashier keeps the book as well as admins do. Clashes and status moves are the editor model's.
TEST_F(AppointmentsViewTest, AppointmentBookingForAnotherDayTakesTheListThereAndTheButtonsFollowItsStatus)
{
    const QDate today(2026, 3, 10);
    const Clock::Override clock{QDateTime(today, QTime(8, 0))};
    auto haircut = std::make_shared<Product>();
    haircut->setName(QStringLiteral("Haircut"));
    haircut->setProductType(ProductType::service);
    auto efua = std::make_shared<StaffMember>();
    efua->setName(QStringLiteral("Efua"));
    performUnitOfWork(store.context(), [&] {
        store.context().insert(haircut);
        store.context().insert(efua);
    });
    signIn();
    auto& view = goTo<AppointmentsView>(QStringLiteral("Appointments"));

    QTest::mouseClick(view.newAppointmentButton(), Qt::LeftButton);
    AppointmentEditor* editor = view.editor();
    EXPECT_EQ(shownButtons(editor), QStringList{"Book Appointment"});
    editor->servicePicker()->setCurrentIndex(editor->servicePicker()->findText("Haircut"));
    view.nextDayButton()->click();
    EXPECT_EQ(view.dayPicker()->date(), today) << "still today until the unsaved booking is answered";
    clickButton(openBox(&view), QStringLiteral("Cancel"));

    editor->startField()->setDateTime(QDateTime(today.addDays(1), QTime(10, 0)));
    editor->lengthField()->setValue(90);
    EXPECT_EQ(editor->lengthField()->text(), "1 hr 30 min");
    editor->staffPicker()->setCurrentIndex(editor->staffPicker()->findText("Efua"));
    editor->bookButton()->click();
    editor = view.editor();
    EXPECT_EQ(view.dayPicker()->date(), today.addDays(1));
    ASSERT_EQ(view.listedTimes(), QStringList{"10:00 AM–11:30 AM"});
    EXPECT_EQ(view.list()->currentIndex().row(), 0);
    EXPECT_EQ(shownButtons(editor), (QStringList{"Delete", "No-Show", "Cancel Appointment", "Save"}));
    EXPECT_FALSE(view.hasUnsavedEdits()) << "opening a booking changes nothing in it";

    editor->cancelButton()->click();
    EXPECT_EQ(shownButtons(editor), (QStringList{"Delete", "Book Again"}));
    EXPECT_FALSE(editor->startField()->isEnabled()) << "a cancelled booking isn't edited";
    EXPECT_EQ(view.list()->model()->index(0, 0).data(AppointmentRowDelegate::statusRole).toString(),
              "Cancelled");

    // Rung up elsewhere: the editor follows the store.
    const Ref<Appointment> booking = editor->model().appointment();
    performUnitOfWork(store.context(), [&] {
        booking->setStatus(AppointmentStatus::completed);
        booking->setSaleInvoiceNumber(QStringLiteral("INV-20260310-0007"));
    });
    EXPECT_EQ(shownButtons(editor), QStringList{"Delete"});
    EXPECT_EQ(editor->subtitleLabel()->text(), "Completed · INV-20260310-0007");
}
