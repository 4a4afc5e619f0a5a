#include "ui/staff/staffview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/screentest.h"
#include "ui/staff/staffdetail.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>

using StaffViewTest = ScreenTest;

// The rate's rules and texts are the staff detail model's; here the form is wired to it.
TEST_F(StaffViewTest, MembersAreSavedWithReturnAndLeavingOrDeletingAsksFirst)
{
    signIn(UserRole::admin);
    StaffView& view = goTo<StaffView>(QStringLiteral("Staff"));
    const auto addMember = [&view](const char* name, const char* rate) {
        QTest::mouseClick(view.newMemberButton(), Qt::LeftButton);
        StaffDetail* detail = view.detail();
        QTest::keyClicks(detail->field(StaffDetail::Field::name), name);
        QLineEdit* commission = detail->field(StaffDetail::Field::commission);
        commission->selectAll();
        QTest::keyClicks(commission, rate);
        QTest::keyClick(commission, Qt::Key_Return);
        return detail;
    };
    StaffDetail* abena = addMember("Abena", "1O");
    EXPECT_TRUE(abena->commissionErrorLabel()->isVisible()) << "said at the field";
    EXPECT_TRUE(view.listedNames().isEmpty()) << "no row until saved";
    abena->field(StaffDetail::Field::commission)->selectAll();
    QTest::keyClicks(abena->field(StaffDetail::Field::commission), "10");
    QTest::keyClick(abena->field(StaffDetail::Field::commission), Qt::Key_Return);
    EXPECT_EQ(view.list()->model()->index(0, 0).data(RecordRowDelegate::detailRole).toString(),
              "10% commission");

    StaffDetail* kwame = addMember("Kwame", "5");
    EXPECT_EQ(view.list()->currentIndex().row(), 1) << "the saved member is the chosen row";
    kwame->activeSwitch()->click();
    view.list()->setCurrentIndex(view.list()->model()->index(0, 0));
    QMessageBox* box = openBox(&view);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Save changes to Kwame?");
    EXPECT_EQ(view.list()->currentIndex().row(), 1) << "nothing changes before the answer";
    clickButton(box, QStringLiteral("Save"));
    EXPECT_EQ(view.detail()->member()->name(), "Abena");
    EXPECT_TRUE(view.list()->model()->index(1, 0).data(RecordRowDelegate::inactiveRole).toBool());

    view.detail()->deleteButton()->click();
    QMessageBox* confirm = openBox(&view);
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete Abena?");
    clickButton(confirm, QStringLiteral("Delete"));
    EXPECT_EQ(view.listedNames(), QStringList{"Kwame"});
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("StaffMember")), 1);
}
