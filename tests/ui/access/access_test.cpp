#include "ui/access/firstrunsetupview.h"
#include "ui/access/loginview.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/navigation/mainnavigationview.h"
#include "ui/windowtest.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {
class LoginViewTest : public WindowTest {
protected:
    void SetUp() override
    {
        ama = addUser(store.context(), {.pin = QStringLiteral("1234")});
        openWindow();
        view = screen<LoginView>();
        ASSERT_NE(view, nullptr);
    }

    QLineEdit* field(LoginView::Field which) const { return view->field(which); }

    Ref<User> ama;
    LoginView* view = nullptr;
};
} // namespace

TEST_F(LoginViewTest, PasswordSignInByKeyboardShowsTheMistakeThenSignsIn)
{
    EXPECT_EQ(focused(), field(LoginView::Field::username));
    QTest::keyClick(focused(), Qt::Key_Tab);
    EXPECT_EQ(focused(), field(LoginView::Field::password));
    QTest::keyClick(focused(), Qt::Key_Tab);
    EXPECT_EQ(focused(), view->signInButton());

    QTest::keyClicks(field(LoginView::Field::username), QStringLiteral(" AMA "));
    QTest::keyClick(field(LoginView::Field::username), Qt::Key_Return);
    ASSERT_EQ(focused(), field(LoginView::Field::password));
    EXPECT_EQ(field(LoginView::Field::password)->echoMode(), QLineEdit::Password);
    QTest::keyClicks(focused(), QStringLiteral("wrong1"));
    QTest::keyClick(focused(), Qt::Key_Return);

    EXPECT_TRUE(view->errorLabel()->isVisible());
    EXPECT_EQ(view->errorLabel()->text(), "Incorrect username or password.");
    EXPECT_EQ(session.currentUser(), nullptr);
    // What was typed stays, selected, so typing again replaces it.
    EXPECT_EQ(field(LoginView::Field::password)->selectedText(), "wrong1");

    QTest::keyClicks(focused(), QStringLiteral("secret1"));
    view->signInButton()->click();
    EXPECT_EQ(session.currentUser(), ama);
    EXPECT_EQ(window->rootView()->screen(), RootView::Screen::mainNavigation);
}

TEST_F(LoginViewTest, QuickPinShowsOnlyTheMaskedPinAndSignsInByIt)
{
    QTest::mouseClick(view->methodPicker()->segment(1), Qt::LeftButton);
    EXPECT_FALSE(field(LoginView::Field::username)->isVisible());
    ASSERT_TRUE(field(LoginView::Field::pin)->isVisible());
    EXPECT_EQ(field(LoginView::Field::pin)->echoMode(), QLineEdit::Password);
    ASSERT_EQ(focused(), field(LoginView::Field::pin));

    QTest::keyClicks(focused(), QStringLiteral("12345"));
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(view->errorLabel()->text(), "Incorrect PIN.");

    QTest::keyClicks(focused(), QStringLiteral("1234"));
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(session.currentUser(), ama);
}

TEST(LoginView, TitleIsTheBusinessOnceSettingsArriveAndBrindleUntilThen)
{
    TestStore store;
    AppEnvironment environment(store.context());
    SessionStore session;
    LoginView view(environment.authService(), session, environment.attemptThrottle());
    EXPECT_EQ(view.titleLabel()->text(), "Brindle");

    // The window loads the settings as it appears, after this screen was made.
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    settings->setBusinessName(QStringLiteral("Adwoa's Salon"));
    session.setSettings(settings);
    EXPECT_EQ(view.titleLabel()->text(), "Adwoa's Salon");
}

// A business name that wraps onto two lines must push the form down, not squeeze it.
TEST(LoginView, TwoLineBusinessNameLeavesEveryFieldWholeInBothModes)
{
    TestStore store;
    AppEnvironment environment(store.context());
    SessionStore session;
    LoginView view(environment.authService(), session, environment.attemptThrottle());
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    settings->setBusinessName(QStringLiteral("Auntie Adwoa's Provisions and General Goods"));
    session.setSettings(settings);
    view.resize(1280, 800);
    view.show();

    for (const LoginView::Field method : {LoginView::Field::username, LoginView::Field::pin}) {
        view.model().setIsUsingPin(method == LoginView::Field::pin);
        QApplication::processEvents();
        const QFontMetrics title(view.titleLabel()->font());
        EXPECT_GE(view.titleLabel()->height(), title.lineSpacing() * 2) << "title cut";
        for (const LoginView::Field which : {LoginView::Field::username, LoginView::Field::password,
                                             LoginView::Field::pin}) {
            QLineEdit* field = view.field(which);
            if (!field->isVisible())
                continue;
            EXPECT_GE(field->height(), field->sizeHint().height()) << field->accessibleName().toStdString();
            // Its caption sits above it, not on it.
            for (const QLabel* caption : field->parentWidget()->findChildren<QLabel*>()) {
                if (caption->buddy() == field) {
                    EXPECT_LE(caption->geometry().bottom(), field->geometry().top())
                        << field->accessibleName().toStdString();
                }
            }
        }
    }
}

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
