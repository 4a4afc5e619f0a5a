#include "ui/navigation/mainnavigationview.h"

#include "ui/access/loginview.h"
#include "ui/settings/settingsview.h"
#include "ui/windowtest.h"

#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

namespace {
QStringList sidebarTitles(const MainNavigationView& view)
{
    QStringList titles;
    for (int row = 0; row < view.sidebar()->count(); ++row)
        titles.append(view.sidebar()->item(row)->text());
    return titles;
}

QStringList labelTexts(const QWidget& widget)
{
    QStringList texts;
    for (const QLabel* label : widget.findChildren<QLabel*>())
        if (label->isVisibleTo(&widget))
            texts.append(label->text());
    return texts;
}
} // namespace

TEST_F(WindowTest, ACashierSeesOnlyTheCashierSectionsAndIsKeptOffAdminOnes)
{
    const Ref<User> kofi = addUser(store.context(), {.username = QStringLiteral("kofi"), .name = "Kofi"});
    openWindow();
    session.setCurrentUser(kofi);

    MainNavigationView* view = screen<MainNavigationView>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(sidebarTitles(*view), (QStringList{"Customers", "Sales History", "Refunds", "Till & Shifts"}));
    EXPECT_TRUE(labelTexts(*view).contains("Cashier"));

    // A request from elsewhere for the cashier's own section goes through; one for Settings is used up
    // without moving, and choosing it outright lands on the first section.
    window->actionBus().setRequestedSection(AppSection::till);
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_EQ(view->model().selection(), AppSection::till);
    EXPECT_EQ(window->actionBus().requestedSection(), std::nullopt);
    view->model().setSelection(AppSection::settings);
    EXPECT_EQ(view->model().selection(), AppSection::customers);
}

TEST_F(WindowTest, AnAdminSeesEveryBuiltSectionAndSignOutLeavesTheShiftOpen)
{
    const Ref<User> boss =
        addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    openWindow();
    auto shift = std::make_shared<TillShift>();
    session.setCurrentTillShift(shift);
    session.setCurrentUser(boss);

    MainNavigationView* view = screen<MainNavigationView>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(sidebarTitles(*view), (QStringList{"Products", "Inventory", "Suppliers", "Customers",
                                                 "Sales History", "Refunds", "Till & Shifts", "Settings"}));
    EXPECT_EQ(view->sidebar()->currentRow(), 0);
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_NE(qobject_cast<SettingsView*>(view->currentScreen()), nullptr);
    EXPECT_TRUE(labelTexts(*view).contains("Admin"));

    QTest::mouseClick(view->signOutButton(), Qt::LeftButton);
    EXPECT_EQ(session.currentUser(), nullptr);
    EXPECT_EQ(session.currentTillShift(), shift);
    EXPECT_NE(screen<LoginView>(), nullptr);
}

TEST_F(WindowTest, AnotherUserGetsAFreshMainWindow)
{
    const Ref<User> boss =
        addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    const Ref<User> kofi = addUser(store.context(), {.username = QStringLiteral("kofi")});
    openWindow();
    session.setCurrentUser(boss);
    QPointer<MainNavigationView> first = screen<MainNavigationView>();

    session.setCurrentUser(kofi);
    ASSERT_NE(screen<MainNavigationView>(), nullptr);
    EXPECT_NE(screen<MainNavigationView>(), first.data());
    EXPECT_EQ(sidebarTitles(*screen<MainNavigationView>()),
              (QStringList{"Customers", "Sales History", "Refunds", "Till & Shifts"}));
}

namespace {
// Sections with stand-in screens, so that the rules can be seen with more than Settings present.
class MainNavigationModelTest : public ::testing::Test {
protected:
    SectionScreens screensFor(std::initializer_list<AppSection> sections)
    {
        SectionScreens screens;
        for (AppSection section : sections)
            screens.add(section, [] { return new QLabel; });
        return screens;
    }

    void signIn(UserRole role) { session.setCurrentUser(addUser(store.context(), {.role = role})); }

    TestStore store;
    AppEnvironment environment{store.context()};
    SessionStore session;
    POSActionBus bus;
};
} // namespace

TEST_F(MainNavigationModelTest, TheAppointmentBookFollowsItsSwitchWhileSignedIn)
{
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    signIn(UserRole::cashier);
    MainNavigationModel model(session, store.context(), bus,
                              screensFor({AppSection::appointments, AppSection::customers}));
    // Settings not loaded yet: no book.
    EXPECT_EQ(model.sections(), QList<AppSection>{AppSection::customers});

    session.setSettings(settings);
    EXPECT_EQ(model.sections(), (QList<AppSection>{AppSection::appointments, AppSection::customers}));
    model.setSelection(AppSection::appointments);

    settings->setAppointmentsEnabled(false);
    store.context().save();
    EXPECT_EQ(model.sections(), QList<AppSection>{AppSection::customers});
    EXPECT_EQ(model.selection(), AppSection::customers);
}
