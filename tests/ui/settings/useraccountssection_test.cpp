#include "ui/settings/useraccountssection.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/settings/pindialog.h"

#include "access/authservice.h"
#include "access/userbuilder.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {
class UserAccountsSectionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        session.setCurrentUser(boss);
        section = std::make_unique<UserAccountsSection>(store.context(), auth, session);
        section->show();
        section->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(section.get()));
    }

    TestStore store;
    AuthService auth{store.context()};
    SessionStore session;
    Ref<User> boss = addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    Ref<User> ama = addUser(store.context(), {.pin = QStringLiteral("1111")});
    std::unique_ptr<UserAccountsSection> section;
};
} // namespace

// The refusals and their texts are the accounts model's; here the form is wired to it.
TEST_F(UserAccountsSectionTest, AddUserFormCreatesTheAccountAndOnlyOthersCanBeSwitchedOff)
{
    using Field = UserAccountsSection::Field;
    QTest::keyClicks(section->field(Field::name), "Kofi Boateng");
    QTest::keyClick(section->field(Field::name), Qt::Key_Return);
    ASSERT_EQ(QApplication::focusWidget(), section->field(Field::username));
    QTest::keyClicks(section->field(Field::username), "Kofi");
    QTest::keyClicks(section->field(Field::password), "123456");
    QTest::keyClicks(section->field(Field::pin), "1111");
    QTest::mouseClick(section->rolePicker()->segment(0), Qt::LeftButton);
    section->createButton()->click();
    EXPECT_TRUE(section->errorLabel()->isVisible());
    section->field(Field::pin)->selectAll();
    QTest::keyClicks(section->field(Field::pin), "2222");
    QTest::keyClick(section->field(Field::pin), Qt::Key_Return);
    EXPECT_FALSE(section->errorLabel()->isVisible());
    EXPECT_EQ(section->field(Field::name)->text(), QString()) << "the form starts again";
    const Ref<User> kofi = auth.login(QStringLiteral("kofi"), QStringLiteral("123456"));
    EXPECT_EQ(kofi->role(), UserRole::admin);
    EXPECT_EQ(section->pinLabel(kofi->id())->text(), "PIN set");

    EXPECT_FALSE(section->activeSwitch(boss->id())->isEnabled());
    QTest::mouseClick(section->activeSwitch(ama->id()), Qt::LeftButton);
    store.reopen();
    EXPECT_FALSE(store.context().find<User>(ama->id())->isActive());
}

TEST_F(UserAccountsSectionTest, SetPinSheetStaysOpenOnARefusalAndClosesOnSave)
{
    section->setPinButton(ama->id())->click();
    auto* sheet = section->findChild<PinDialog*>();
    ASSERT_NE(sheet, nullptr);
    QTest::keyClicks(sheet->pinField(), "12a4");
    QTest::keyClick(sheet->pinField(), Qt::Key_Return);
    EXPECT_TRUE(sheet->errorLabel()->isVisible());
    sheet->pinField()->selectAll();
    QTest::keyClicks(sheet->pinField(), "4321");
    sheet->saveButton()->click();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(ama->pin(), QStringLiteral("4321"));
}
