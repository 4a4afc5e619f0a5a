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

// The refusals and their texts are the sign-in and setup models'; here the keyboard reaches them.
TEST_F(WindowTest, SignInByPasswordThenByPinWithAMistakeShownAndSelectedForRetyping)
{
    const Ref<User> ama = addUser(store.context(), {.pin = QStringLiteral("1234")});
    openWindow();
    auto* view = screen<LoginView>();
    ASSERT_NE(view, nullptr);
    const auto field = [&view](LoginView::Field which) { return view->field(which); };
    EXPECT_EQ(view->titleLabel()->text(), "My Retail Store") << "the business, once the settings are loaded";
    EXPECT_EQ(focused(), field(LoginView::Field::username));
    QTest::keyClicks(focused(), QStringLiteral(" AMA "));
    QTest::keyClick(focused(), Qt::Key_Return);
    ASSERT_EQ(focused(), field(LoginView::Field::password));
    EXPECT_EQ(field(LoginView::Field::password)->echoMode(), QLineEdit::Password);
    QTest::keyClicks(focused(), QStringLiteral("wrong1"));
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_TRUE(view->errorLabel()->isVisible());
    EXPECT_EQ(field(LoginView::Field::password)->selectedText(), "wrong1");
    QTest::keyClicks(focused(), QStringLiteral("secret1"));
    view->signInButton()->click();
    EXPECT_EQ(session.currentUser(), ama);

    session.setCurrentUser(nullptr);
    view = screen<LoginView>();
    QTest::mouseClick(view->methodPicker()->segment(1), Qt::LeftButton);
    EXPECT_FALSE(field(LoginView::Field::username)->isVisible());
    ASSERT_EQ(focused(), field(LoginView::Field::pin));
    EXPECT_EQ(field(LoginView::Field::pin)->echoMode(), QLineEdit::Password);
    QTest::keyClicks(focused(), QStringLiteral("1234"));
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(session.currentUser(), ama);
    EXPECT_EQ(window->rootView()->screen(), RootView::Screen::mainNavigation);
}

// A business name that wraps onto two lines must push the form down, not squeeze it.
TEST(LoginView, TwoLineBusinessNameLeavesEveryFieldWholeInBothModes)
{
    TestStore store;
    AppEnvironment environment(store.context());
    SessionStore session;
    LoginView view(environment.authService(), session, environment.attemptThrottle());
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    settings->setBusinessName(QStringLiteral("Auntie Adwoa's Provisions, Cold Store, Cosmetics and General Goods Enterprise"));
    session.setSettings(settings);
    view.resize(1280, 800);
    view.show();

    for (const LoginView::Field method : {LoginView::Field::username, LoginView::Field::pin}) {
        view.model().setIsUsingPin(method == LoginView::Field::pin);
        QApplication::processEvents();
        const QLabel* title = view.titleLabel();
        const QRect needed = QFontMetrics(title->font()).boundingRect(QRect(0, 0, title->width(), 1000),
                                                                      Qt::TextWordWrap, title->text());
        ASSERT_GE(needed.height(), QFontMetrics(title->font()).lineSpacing() * 2) << title->width();
        EXPECT_GE(title->height(), needed.height()) << "title cut";
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

TEST_F(WindowTest, FirstRunRefusesAGapInTheFormThenSignsTheNewAdminIn)
{
    using Field = FirstRunSetupView::Field;
    openWindow();
    auto* view = screen<FirstRunSetupView>();
    ASSERT_NE(view, nullptr);
    // Tab and Return both walk the form in order; Return on the last field creates the account.
    const QStringList typed{"  ", "Adwoa Mensah", "Adwoa", "12345", "12345"};
    for (int index = 0; index < typed.size(); ++index) {
        ASSERT_EQ(focused(), view->field(static_cast<Field>(index))) << index;
        QTest::keyClicks(focused(), typed[index]);
        QTest::keyClick(focused(), index % 2 || index == typed.size() - 1 ? Qt::Key_Return : Qt::Key_Tab);
    }
    EXPECT_TRUE(view->errorLabel()->isVisible());
    EXPECT_EQ(store.context().count<User>(), 0);

    for (const auto& [field, text] : {std::pair{Field::businessName, "Osu Salon"},
                                      {Field::adminPassword, "secret1"},
                                      {Field::confirmPassword, "secret1"}}) {
        view->field(field)->selectAll();
        QTest::keyClicks(view->field(field), text);
    }
    view->createButton()->click();
    ASSERT_NE(session.currentUser(), nullptr);
    EXPECT_EQ(session.currentUser()->username(), "adwoa");
    EXPECT_EQ(session.settings()->businessName(), "Osu Salon");
    EXPECT_NE(screen<MainNavigationView>(), nullptr);
}
