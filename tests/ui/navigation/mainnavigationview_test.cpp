#include "records/appsettings.h"
#include "support/printers.h"
#include "ui/access/loginview.h"
#include "ui/controls/screentest.h"
#include "ui/navigation/appsection.h"
#include "ui/navigation/mainnavigationview.h"
#include "ui/settings/settingsview.h"

#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {
QStringList sidebarTitles(const MainNavigationView& view)
{
    QStringList titles;
    for (int row = 0; row < view.sidebar()->count(); ++row)
        titles.append(view.sidebar()->item(row)->text());
    return titles;
}

} // namespace

TEST_F(WindowTest, ACashierSeesOnlyTheCashierSectionsAndIsKeptOffAdminOnes)
{
    const Ref<User> kofi = addUser(store.context(), {.username = QStringLiteral("kofi"), .name = "Kofi"});
    openWindow();
    session.setCurrentUser(kofi);

    MainNavigationView* view = screen<MainNavigationView>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(sidebarTitles(*view), (QStringList{"Appointments", "Customers", "Sales History", "Refunds", "Till & Shifts"}));
    EXPECT_TRUE(visibleTexts(view).contains("Cashier"));

    // A request from elsewhere for the cashier's own section goes through; one for Settings is used up
    // without moving, and choosing it outright lands on the first section.
    window->actionBus().setRequestedSection(AppSection::till);
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_EQ(view->model().selection(), AppSection::till);
    EXPECT_EQ(window->actionBus().requestedSection(), std::nullopt);
    view->model().setSelection(AppSection::settings);
    EXPECT_EQ(view->model().selection(), AppSection::appointments);
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
    EXPECT_EQ(sidebarTitles(*view),
              (QStringList{"Appointments", "Products", "Inventory", "Suppliers", "Customers", "Staff", "Sales History",
                           "Refunds", "Till & Shifts", "Audit Log", "Settings"}));
    EXPECT_EQ(view->sidebar()->currentRow(), 0);
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_NE(qobject_cast<SettingsView*>(view->currentScreen()), nullptr);
    EXPECT_TRUE(visibleTexts(view).contains("Admin"));

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
              (QStringList{"Appointments", "Customers", "Sales History", "Refunds", "Till & Shifts"}));
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

namespace {
QStringList titles(const QList<AppSection>& sections)
{
    QStringList result;
    for (AppSection section : sections)
        result.append(AppSections::title(section));
    return result;
}
} // namespace

TEST(AppSections, WhoSeesWhat)
{
    AppSettings bookOn;
    AppSettings bookOff;
    bookOff.setAppointmentsEnabled(false);
    const QStringList cashier{"POS Workspace", "Appointments", "Customers",
                              "Sales History", "Refunds",      "Till & Shifts"};

    EXPECT_EQ(titles(AppSections::available("cashier", &bookOn)), cashier);
    EXPECT_EQ(AppSections::available("cashier", &bookOff).size(), 5);
    EXPECT_EQ(AppSections::available("cashier", nullptr).size(), 5) << "no settings, no book";
    EXPECT_EQ(titles(AppSections::available("manager", &bookOn)), cashier) << "unknown role as cashier";
    EXPECT_EQ(titles(AppSections::available("Admin", &bookOn)), cashier) << "raw texts are exact";

    const QList<AppSection> admin = AppSections::available("admin", &bookOn);
    EXPECT_EQ(admin.size(), 15);
    EXPECT_EQ(titles({admin.first(), admin.last()}), (QStringList{"Dashboard", "Settings"}));
}

TEST(AppSections, AllowedSelection)
{
    using S = AppSection;
    const QList<S> withPos{S::pos, S::customers};
    const QList<S> withoutPos{S::customers, S::till};
    const struct {
        const char* fault;
        std::optional<S> wanted;
        bool isAdmin;
        QList<S> offered;
        std::optional<S> expected;
    } cases[] = {
        {"cashier kept on an admin-only section", S::reports, false, withPos, S::pos},
        {"no workspace to fall back on", S::reports, false, withoutPos, S::customers},
        {"nothing offered at all", S::settings, false, {}, std::nullopt},
        {"a section that isn't offered", S::refunds, true, withPos, S::pos},
        {"a cashier's own section refused", S::customers, false, withPos, S::customers},
        {"an admin refused an admin section", S::settings, true, {S::settings}, S::settings},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AppSections::allowedSelection(c.wanted, c.isAdmin, c.offered), c.expected) << c.fault;
}
