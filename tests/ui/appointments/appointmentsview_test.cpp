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
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

namespace {
// Signed in as a cashier, who keeps the book as well as admins do.
class AppointmentsViewTest : public ScreenTest {
protected:
    void SetUp() override
    {
        haircut = saved([] {
            auto made = std::make_shared<Product>();
            made->setName(QStringLiteral("Haircut"));
            made->setProductType(ProductType::service);
            return made;
        }());
        efua = saved([] {
            auto made = std::make_shared<StaffMember>();
            made->setName(QStringLiteral("Efua"));
            return made;
        }());
    }

    AppointmentsView& openBook()
    {
        signIn();
        view = &goTo<AppointmentsView>(QStringLiteral("Appointments"));
        return *view;
    }

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(store.context(), [&] { store.context().insert(record); });
        return record;
    }

    // "New Appointment" for a haircut with Efua at the time given, booked.
    AppointmentEditor* book(const QDateTime& start)
    {
        QTest::mouseClick(view->newAppointmentButton(), Qt::LeftButton);
        AppointmentEditor* editor = view->editor();
        editor->startField()->setDateTime(start);
        editor->servicePicker()->setCurrentIndex(editor->servicePicker()->findText("Haircut"));
        editor->staffPicker()->setCurrentIndex(editor->staffPicker()->findText("Efua"));
        editor->bookButton()->click();
        return view->editor();
    }

    QDate today{2026, 3, 10};
    Clock::Override clock{QDateTime(today, QTime(8, 0))};
    Ref<Product> haircut;
    Ref<StaffMember> efua;
    AppointmentsView* view = nullptr;
};

QStringList shownButtons(AppointmentEditor* editor)
{
    QStringList shown;
    for (QPushButton* button : {editor->deleteButton(), editor->noShowButton(), editor->cancelButton(),
                                editor->bookAgainButton(), editor->bookButton()})
        if (button->isVisibleTo(editor))
            shown << button->text();
    return shown;
}
} // namespace

TEST_F(AppointmentsViewTest, TheButtonsAndFieldsFollowTheBookingsStatus)
{
    openBook();
    QTest::mouseClick(view->newAppointmentButton(), Qt::LeftButton);
    AppointmentEditor* editor = view->editor();
    EXPECT_EQ(shownButtons(editor), QStringList{"Book Appointment"});
    EXPECT_EQ(editor->startField()->dateTime(), QDateTime(today, QTime(9, 0)));
    EXPECT_EQ(editor->lengthField()->text(), "30 min");
    editor->lengthField()->setValue(90);
    EXPECT_EQ(editor->lengthField()->text(), "1 hr 30 min");
    EXPECT_EQ(editor->model().durationMinutes(), 90);

    editor->startField()->setDateTime(QDateTime(today, QTime(10, 0)));
    editor->servicePicker()->setCurrentIndex(0);
    editor->bookButton()->click();
    ASSERT_EQ(view->listedTimes(), QStringList{"10:00 AM–11:30 AM"});
    EXPECT_EQ(view->list()->currentRow(), 0);
    EXPECT_EQ(shownButtons(editor), (QStringList{"Delete", "No-Show", "Cancel Appointment", "Save"}));
    EXPECT_EQ(editor->titleLabel()->text(), "Haircut");

    editor->cancelButton()->click();
    EXPECT_EQ(shownButtons(editor), (QStringList{"Delete", "Book Again"}));
    EXPECT_FALSE(editor->startField()->isEnabled()) << "a cancelled booking isn't edited";
    EXPECT_EQ(view->list()->item(0)->data(AppointmentRowDelegate::statusRole).toString(), "Cancelled");
    editor->bookAgainButton()->click();
    EXPECT_TRUE(editor->startField()->isEnabled());

    const Ref<Appointment> booking = editor->model().appointment();
    performUnitOfWork(store.context(), [&] {
        booking->setStatus(AppointmentStatus::completed);
        booking->setSaleInvoiceNumber(QStringLiteral("INV-20260310-0007"));
    });
    EXPECT_EQ(shownButtons(editor), QStringList{"Delete"}) << "paid elsewhere: it can't be rung up again";
    EXPECT_EQ(editor->subtitleLabel()->text(), "Completed · INV-20260310-0007");
}

TEST_F(AppointmentsViewTest, AWalkInIsTypedAndACustomerIsChosen)
{
    saved([] {
        auto kofi = std::make_shared<Customer>();
        kofi->setName(QStringLiteral("Kofi"));
        return kofi;
    }());
    openBook();
    QTest::mouseClick(view->newAppointmentButton(), Qt::LeftButton);
    AppointmentEditor* editor = view->editor();
    EXPECT_EQ(editor->customerPicker()->currentText(), "Walk-in / not in Customers");
    EXPECT_TRUE(editor->walkInNameField()->isVisibleTo(editor));
    QTest::keyClicks(editor->walkInNameField(), "Yaw");
    editor->customerPicker()->setCurrentIndex(editor->customerPicker()->findText("Kofi"));
    EXPECT_FALSE(editor->walkInNameField()->isVisibleTo(editor));
    editor->customerPicker()->setCurrentIndex(0);
    EXPECT_TRUE(editor->walkInNameField()->isVisibleTo(editor));
    EXPECT_EQ(editor->walkInNameField()->text(), "Yaw") << "what was typed is still there";
}

TEST_F(AppointmentsViewTest, AnotherDayWaitsUntilUnsavedEditsAreAnswered)
{
    openBook();
    QTest::mouseClick(view->newAppointmentButton(), Qt::LeftButton);
    view->editor()->servicePicker()->setCurrentIndex(0);
    view->nextDayButton()->click();
    auto* box = view->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Save changes to New Appointment?");
    EXPECT_EQ(view->dayPicker()->date(), today) << "still today until the answer";
    clickButton(openBox(view), QStringLiteral("Don't Save"));
    EXPECT_EQ(view->dayPicker()->date(), today.addDays(1));
    EXPECT_EQ(view->editor(), nullptr);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Appointment")), 0);
}

TEST_F(AppointmentsViewTest, ABookingForAnotherDayTakesTheListThereAndClashesAreWarned)
{
    openBook();
    const QDate tomorrow = today.addDays(1);
    AppointmentEditor* editor = book(QDateTime(tomorrow, QTime(10, 0)));
    EXPECT_EQ(view->model().day(), tomorrow);
    EXPECT_EQ(view->dayPicker()->date(), tomorrow);
    ASSERT_EQ(view->listedTimes(), QStringList{"10:00 AM–10:30 AM"});
    EXPECT_EQ(view->list()->currentRow(), 0);
    EXPECT_FALSE(editor->clashLabel()->isVisibleTo(editor));
    EXPECT_FALSE(view->hasUnsavedEdits()) << "opening a booking changes nothing in it";

    QTest::mouseClick(view->newAppointmentButton(), Qt::LeftButton);
    editor = view->editor();
    editor->startField()->setDateTime(QDateTime(tomorrow, QTime(10, 15)));
    editor->staffPicker()->setCurrentIndex(editor->staffPicker()->findText("Efua"));
    EXPECT_TRUE(editor->clashLabel()->isVisibleTo(editor));
    EXPECT_EQ(editor->clashLabel()->text(), "Efua already has Haircut at 10:00 AM. You can still save.");
    editor->servicePicker()->setCurrentIndex(0);
    editor->bookButton()->click();
    ASSERT_EQ(view->listedTimes(), (QStringList{"10:00 AM–10:30 AM", "10:15 AM–10:45 AM"}));
    EXPECT_EQ(view->list()->currentRow(), 1);
    EXPECT_EQ(view->list()->item(0)->data(AppointmentRowDelegate::clashRole).toString(),
              "Overlaps another booking for Efua");
}
