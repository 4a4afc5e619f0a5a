#include "ui/access/firstrunsetupview.h"

#include "ui/controls/errorlabel.h"
#include "ui/navigation/mainnavigationview.h"
#include "ui/windowtest.h"

#include <QLineEdit>
#include <QPushButton>

using Field = FirstRunSetupView::Field;

TEST_F(WindowTest, FirstRunRefusesAGapInTheFormThenSignsTheNewAdminIn)
{
    openWindow();
    FirstRunSetupView* view = screen<FirstRunSetupView>();
    ASSERT_NE(view, nullptr);
    ASSERT_EQ(focused(), view->field(Field::businessName));

    // Tab and Return both walk the form in order; Return on the last field creates the account.
    const QStringList typed{"  ", "Adwoa Mensah", "Adwoa", "12345", "12345"};
    for (int index = 0; index < typed.size(); ++index) {
        ASSERT_EQ(focused(), view->field(static_cast<Field>(index))) << index;
        QTest::keyClicks(focused(), typed[index]);
        QTest::keyClick(focused(), index % 2 || index == typed.size() - 1 ? Qt::Key_Return : Qt::Key_Tab);
    }
    EXPECT_EQ(view->errorLabel()->text(), "Enter a business name, your name, and a username.");
    EXPECT_TRUE(view->errorLabel()->isVisible());
    EXPECT_EQ(store.context().count<User>(), 0);

    // The other refusals and their texts are pinned by the setup model's test.
    for (const auto& [field, text] : {std::pair{Field::businessName, "Osu Salon"},
                                      {Field::adminPassword, "secret1"},
                                      {Field::confirmPassword, "secret1"}}) {
        view->field(field)->selectAll();
        QTest::keyClicks(view->field(field), text);
    }
    view->createButton()->click();

    const Ref<User> admin = session.currentUser();
    ASSERT_NE(admin, nullptr);
    EXPECT_EQ(admin->username(), "adwoa");
    EXPECT_EQ(admin->role(), UserRole::admin);
    EXPECT_EQ(session.settings()->businessName(), "Osu Salon");
    EXPECT_EQ(window->rootView()->screen(), RootView::Screen::mainNavigation);
    EXPECT_NE(screen<MainNavigationView>(), nullptr);
}
