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
        boss = addUser(
            store.context(),
            {.username = QStringLiteral("boss"), .role = UserRole::admin, .name = QStringLiteral("Boss")});
        ama = addUser(store.context(), {.pin = QStringLiteral("1111")});
        session.setCurrentUser(boss);
        section = std::make_unique<UserAccountsSection>(store.context(), auth, session);
        section->show();
        section->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(section.get()));
    }

    QLineEdit* field(UserAccountsSection::Field which) const { return section->field(which); }

    TestStore store;
    AuthService auth{store.context()};
    SessionStore session;
    Ref<User> boss;
    Ref<User> ama;
    std::unique_ptr<UserAccountsSection> section;
};
} // namespace

TEST_F(UserAccountsSectionTest, AddUserFormCreatesTheAccountAndListsIt)
{
    using Field = UserAccountsSection::Field;
    QTest::keyClicks(field(Field::name), "Kofi Boateng");
    QTest::keyClick(field(Field::name), Qt::Key_Return);
    ASSERT_EQ(QApplication::focusWidget(), field(Field::username));
    QTest::keyClicks(field(Field::username), "Kofi");
    QTest::keyClicks(field(Field::password), "123456");
    QTest::keyClicks(field(Field::pin), "1111");
    QTest::mouseClick(section->rolePicker()->segment(0), Qt::LeftButton);
    section->createButton()->click();
    EXPECT_EQ(section->errorLabel()->text(), "Someone else already has that PIN. Choose another.");

    field(Field::pin)->selectAll();
    QTest::keyClicks(field(Field::pin), "2222");
    QTest::keyClick(field(Field::pin), Qt::Key_Return);
    EXPECT_FALSE(section->errorLabel()->isVisible());
    for (Field cleared : {Field::name, Field::username, Field::password, Field::pin})
        EXPECT_EQ(field(cleared)->text(), QString());
    EXPECT_EQ(section->rolePicker()->currentIndex(), 0) << "the role stays for the next one";
    EXPECT_EQ(QApplication::focusWidget(), field(Field::name));

    const Ref<User> kofi = auth.login(QStringLiteral("kofi"), QStringLiteral("123456"));
    EXPECT_EQ(kofi->role(), UserRole::admin);
    EXPECT_EQ(kofi->pin(), QStringLiteral("2222"));
    ASSERT_NE(section->pinLabel(kofi->id()), nullptr);
    EXPECT_EQ(section->pinLabel(kofi->id())->text(), "PIN set");
}

TEST_F(UserAccountsSectionTest, OnlyOthersCanBeSwitchedOff)
{
    QCheckBox* own = section->activeSwitch(boss->id());
    ASSERT_NE(own, nullptr);
    EXPECT_FALSE(own->isEnabled());
    EXPECT_EQ(own->toolTip(), "You can't deactivate the account you're signed in with.");
    const QList<QLabel*> labels = section->findChildren<QLabel*>();
    EXPECT_EQ(std::count_if(labels.begin(), labels.end(),
                            [](QLabel* label) { return label->isVisible() && label->text() == "You"; }),
              1);

    QCheckBox* amas = section->activeSwitch(ama->id());
    ASSERT_TRUE(amas->isEnabled());
    QTest::mouseClick(amas, Qt::LeftButton);
    store.reopen();
    EXPECT_FALSE(store.context().find<User>(ama->id())->isActive());
}

TEST_F(UserAccountsSectionTest, SetPinSheetStaysOpenOnARefusalAndClosesOnSave)
{
    section->setPinButton(ama->id())->click();
    auto* sheet = section->findChild<PinDialog*>();
    ASSERT_NE(sheet, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(sheet));
    EXPECT_EQ(sheet->windowTitle(), "PIN for Ama");

    QTest::keyClicks(sheet->pinField(), "12a4");
    QTest::keyClick(sheet->pinField(), Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->errorLabel()->text(), "A PIN is 4 to 6 digits.");
    EXPECT_EQ(ama->pin(), QStringLiteral("1111"));

    sheet->pinField()->selectAll();
    QTest::keyClicks(sheet->pinField(), "4321");
    sheet->saveButton()->click();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(ama->pin(), QStringLiteral("4321"));

    // Escape leaves the PIN alone.
    section->setPinButton(ama->id())->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    auto* again = section->findChild<PinDialog*>();
    ASSERT_NE(again, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(again));
    QTest::keyClicks(again->pinField(), "9999");
    QTest::keyClick(again->pinField(), Qt::Key_Escape);
    EXPECT_FALSE(again->isVisible());
    EXPECT_EQ(ama->pin(), QStringLiteral("4321"));
}
