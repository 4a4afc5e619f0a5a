#include "ui/settings/useraccountssection.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/settings/pindialog.h"
#include "ui/settings/usereditsheet.h"

#include "access/authservice.h"
#include "access/userbuilder.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
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

TEST_F(UserAccountsSectionTest, EditSheetRenamesAndResetsThePasswordAndKeepsTheLastAdmin)
{
    const auto openEdit = [this](const Ref<User>& who) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        section->editButton(who->id())->click();
        return section->findChild<UserEditSheet*>();
    };
    UserEditSheet* sheet = openEdit(boss);
    ASSERT_NE(sheet, nullptr);
    QTest::mouseClick(sheet->rolePicker()->segment(1), Qt::LeftButton);
    sheet->primaryButton()->click();
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->errorLabel()->text(), "There must be at least one active admin.");
    sheet->cancelButton()->click();
    EXPECT_EQ(boss->role(), UserRole::admin);

    sheet = openEdit(ama);
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->nameField()->text(), "Ama");
    sheet->nameField()->selectAll();
    QTest::keyClicks(sheet->nameField(), "Ama Kusi");
    QTest::keyClicks(sheet->passwordField(), "forgot it");
    QTest::keyClicks(sheet->confirmField(), "forgot i");
    QTest::keyClick(sheet->confirmField(), Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible()) << "the passwords differ";
    QTest::keyClicks(sheet->confirmField(), "t");
    QTest::keyClick(sheet->confirmField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible());
    QStringList names;
    for (const QLabel* label : section->findChildren<QLabel*>())
        names << label->text();
    EXPECT_TRUE(names.contains("Ama Kusi")) << "the list follows the saved name";
    EXPECT_EQ(auth.login(QStringLiteral("ama"), QStringLiteral("forgot it")), ama);
}

TEST_F(UserAccountsSectionTest, ARefusedSwitchSaysWhyBesideTheList)
{
    // The only other admin is switched off while Ama, a cashier, has the list open.
    session.setCurrentUser(ama);
    QTest::mouseClick(section->activeSwitch(boss->id()), Qt::LeftButton);
    EXPECT_TRUE(section->listErrorLabel()->isVisible());
    EXPECT_FALSE(section->errorLabel()->isVisible()) << "not in the Add User form";
    EXPECT_TRUE(section->activeSwitch(boss->id())->isChecked());
    EXPECT_TRUE(boss->isActive());
}
