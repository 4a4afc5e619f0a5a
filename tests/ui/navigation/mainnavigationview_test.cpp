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
QStringList titles(const QList<AppSection>& sections)
{
    QStringList result;
    for (AppSection section : sections)
        result.append(AppSections::title(section));
    return result;
}
} // namespace

TEST_F(WindowTest, EachUserGetsAFreshSidebarOfTheirSectionsAndSignOutLeavesTheShiftOpen)
{
    const Ref<User> boss = addUser(store.context(), {.username = QStringLiteral("boss"), .role = UserRole::admin});
    const Ref<User> kofi = addUser(store.context(), {.username = QStringLiteral("kofi")});
    openWindow();
    session.setCurrentUser(boss);
    QPointer<MainNavigationView> first = screen<MainNavigationView>();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->sidebar()->count(), 12) << "every built section";
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_NE(qobject_cast<SettingsView*>(first->currentScreen()), nullptr);

    session.setCurrentUser(kofi);
    MainNavigationView* view = screen<MainNavigationView>();
    ASSERT_NE(view, nullptr);
    EXPECT_NE(view, first.data());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(first, nullptr) << "the admin's sidebar goes with them";
    EXPECT_EQ(view->sidebar()->count(), 5);
    // A request for the cashier's own section goes through; one for Settings is used up without moving.
    window->actionBus().setRequestedSection(AppSection::till);
    window->actionBus().setRequestedSection(AppSection::settings);
    EXPECT_EQ(view->model().selection(), AppSection::till);
    EXPECT_EQ(window->actionBus().requestedSection(), std::nullopt);

    const auto shift = std::make_shared<TillShift>();
    session.setCurrentTillShift(shift);
    QTest::mouseClick(view->signOutButton(), Qt::LeftButton);
    EXPECT_EQ(session.currentUser(), nullptr);
    EXPECT_EQ(session.currentTillShift(), shift);
    EXPECT_NE(screen<LoginView>(), nullptr);
}

TEST(MainNavigationModel, TheAppointmentBookFollowsItsSwitchWhileSignedIn)
{
    TestStore store;
    AppEnvironment environment{store.context()};
    SessionStore session;
    POSActionBus bus;
    const Ref<AppSettings> settings = environment.loadOrCreateSettings();
    session.setCurrentUser(addUser(store.context()));
    SectionScreens screens;
    for (AppSection section : {AppSection::appointments, AppSection::customers})
        screens.add(section, [] { return new QLabel; });
    MainNavigationModel model(session, store.context(), bus, std::move(screens));
    EXPECT_EQ(model.sections(), QList<AppSection>{AppSection::customers}) << "settings not loaded yet: no book";
    session.setSettings(settings);
    model.setSelection(AppSection::appointments);
    EXPECT_EQ(model.selection(), AppSection::appointments);

    settings->setAppointmentsEnabled(false);
    store.context().save();
    EXPECT_EQ(model.sections(), QList<AppSection>{AppSection::customers});
    EXPECT_EQ(model.selection(), AppSection::customers);
}

TEST(AppSections, WhoSeesWhat)
{
    AppSettings bookOn;
    AppSettings bookOff;
    bookOff.setAppointmentsEnabled(false);
    const QStringList cashier{"POS Workspace", "Appointments", "Customers", "Sales History", "Refunds", "Till & Shifts"};
    EXPECT_EQ(titles(AppSections::available("cashier", &bookOn)), cashier);
    EXPECT_EQ(AppSections::available("cashier", &bookOff).size(), 5);
    EXPECT_EQ(AppSections::available("cashier", nullptr).size(), 5) << "no settings, no book";
    EXPECT_EQ(titles(AppSections::available("manager", &bookOn)), cashier) << "unknown role as cashier";
    EXPECT_EQ(titles(AppSections::available("Admin", &bookOn)), cashier) << "raw texts are exact";
    EXPECT_EQ(AppSections::available("admin", &bookOn).size(), 15);
}

TEST(AppSections, AllowedSelection)
{
    using S = AppSection;
    const QList<S> withPos{S::pos, S::customers};
    const struct {
        const char* fault;
        std::optional<S> wanted;
        bool isAdmin;
        QList<S> offered;
        std::optional<S> expected;
    } cases[] = {
        {"cashier kept on an admin-only section", S::reports, false, withPos, S::pos},
        {"no workspace to fall back on", S::reports, false, {S::customers, S::till}, S::customers},
        {"nothing offered at all", S::settings, false, {}, std::nullopt},
        {"a section that isn't offered", S::refunds, true, withPos, S::pos},
        {"a cashier's own section refused", S::customers, false, withPos, S::customers},
        {"an admin refused an admin section", S::settings, true, {S::settings}, S::settings},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AppSections::allowedSelection(c.wanted, c.isAdmin, c.offered), c.expected) << c.fault;
}
