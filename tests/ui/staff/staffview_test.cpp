#include "ui/staff/staffview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/screentest.h"
#include "ui/staff/staffdetail.h"

#include "support/faultloop.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

namespace {
class StaffViewTest : public ScreenTest {
protected:
    StaffView& openStaff()
    {
        signIn(UserRole::admin);
        view = &goTo<StaffView>(QStringLiteral("Staff"));
        return *view;
    }

    // "New Staff Member", named and saved with Return.
    StaffDetail* addMember(const char* name, const char* rate)
    {
        QTest::mouseClick(view->newMemberButton(), Qt::LeftButton);
        StaffDetail* detail = view->detail();
        QTest::keyClicks(detail->field(StaffDetail::Field::name), name);
        QLineEdit* commission = detail->field(StaffDetail::Field::commission);
        commission->selectAll();
        QTest::keyClicks(commission, rate);
        QTest::keyClick(commission, Qt::Key_Return);
        return detail;
    }

    StaffView* view = nullptr;
};
} // namespace

TEST_F(StaffViewTest, NewMembersAreTypedOverTheirPlaceholderAndChosenOnceSaved)
{
    openStaff();
    QTest::mouseClick(view->newMemberButton(), Qt::LeftButton);
    StaffDetail* detail = view->detail();
    ASSERT_NE(detail, nullptr);
    EXPECT_EQ(focused(), detail->field(StaffDetail::Field::name));
    EXPECT_EQ(detail->field(StaffDetail::Field::name)->selectedText(), "New Staff Member");
    EXPECT_FALSE(detail->deleteButton()->isVisibleTo(detail)) << "nothing in the store to delete yet";
    EXPECT_TRUE(view->listedNames().isEmpty()) << "no row until saved";

    QTest::keyClicks(detail->field(StaffDetail::Field::name), "Efua");
    QLineEdit* commission = detail->field(StaffDetail::Field::commission);
    commission->selectAll();
    QTest::keyClicks(commission, "1O");
    EXPECT_EQ(detail->commissionErrorLabel()->text(), "Enter a percentage such as 10.")
        << "said at the field";
    detail->saveButton()->click();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("StaffMember")), 0);

    QTest::keyClick(commission, Qt::Key_Backspace);
    QTest::keyClicks(commission, "0");
    EXPECT_FALSE(detail->commissionErrorLabel()->isVisible());
    QTest::keyClick(commission, Qt::Key_Return);
    EXPECT_EQ(view->listedNames(), QStringList{"Efua"});
    EXPECT_EQ(view->list()->currentRow(), 0) << "the saved member is the chosen row";
    EXPECT_EQ(view->list()->item(0)->data(RecordRowDelegate::detailRole).toString(), "10% commission");
    EXPECT_TRUE(detail->deleteButton()->isVisibleTo(detail));
    EXPECT_EQ(detail->commissionLabel()->text(), "₵0.00");
}

TEST_F(StaffViewTest, LeavingUnsavedEditsAsksAndTheListWaitsForTheAnswer)
{
    openStaff();
    addMember("Abena", "10");
    StaffDetail* kwame = addMember("Kwame", "5");
    ASSERT_EQ(view->listedNames(), (QStringList{"Abena", "Kwame"}));
    kwame->activeSwitch()->click();

    view->list()->setCurrentRow(0);
    auto* box = view->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Save changes to Kwame?");
    EXPECT_EQ(view->list()->currentRow(), 1) << "nothing changes before the answer";
    clickButton(openBox(view), QStringLiteral("Save"));
    EXPECT_EQ(view->detail()->member()->name(), "Abena");
    EXPECT_EQ(view->list()->currentRow(), 0);
    EXPECT_EQ(view->list()->item(1)->data(RecordRowDelegate::inactiveRole).toBool(), true)
        << "Kwame shows as inactive";
}

TEST_F(StaffViewTest, DeleteAsksWithTheMembersNameAndTheirRowGoes)
{
    openStaff();
    StaffDetail* detail = addMember("Efua", "10");
    detail->deleteButton()->click();
    auto* confirm = view->findChild<QMessageBox*>();
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete Efua?");
    EXPECT_TRUE(confirm->informativeText().startsWith("Past sales and appointments keep their name"));
    clickButton(openBox(view), QStringLiteral("Delete"));
    EXPECT_EQ(view->detail(), nullptr);
    EXPECT_TRUE(view->listedNames().isEmpty());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("StaffMember")), 0);
}
