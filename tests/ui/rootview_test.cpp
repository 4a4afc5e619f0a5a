#include "ui/mainwindow.h"
#include "ui/rootview.h"

#include "access/userbuilder.h"
#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "stores/marketswitcher.h"
#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"
#include "support/teststore.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPointer>

#include <gtest/gtest.h>

namespace {
RootView::ScreenFactories namedScreens(int& made)
{
    auto make = [&made](const char* name) {
        return [&made, name] {
            ++made;
            auto* screen = new QLabel;
            screen->setObjectName(name);
            return screen;
        };
    };
    return {make("setup"), make("signIn"), make("main")};
}
} // namespace

TEST(RootView, FollowsUsersAndTheSessionAsTheyChange)
{
    TestStore store;
    AppEnvironment environment(store.context());
    SessionStore session;
    const auto signedIn = std::make_shared<User>();
    session.setCurrentUser(signedIn);
    int made = 0;
    RootView root(environment, session, namedScreens(made));

    EXPECT_EQ(root.currentWidget()->objectName(), "setup") << "without users, whoever the session holds";

    store.context().insert(signedIn);
    store.context().save();
    EXPECT_EQ(root.screen(), RootView::Screen::mainNavigation);
    QPointer<QWidget> mainScreen = root.currentWidget();
    addUser(store.context()); // leaves the choice alone: the screen and what is typed in it stay
    EXPECT_EQ(root.currentWidget(), mainScreen);

    session.setCurrentUser(nullptr);
    EXPECT_EQ(root.screen(), RootView::Screen::signIn);
    EXPECT_EQ(root.count(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(mainScreen.isNull());

    // Deleting every user from elsewhere brings setup back at once.
    for (const Ref<User>& user : store.context().fetch<User>())
        store.context().remove(user);
    store.context().save();
    EXPECT_EQ(root.screen(), RootView::Screen::firstRunSetup);
    EXPECT_EQ(made, 4);
}

TEST(MainWindow, AppearingLoadsSettingsAndTheOpenShiftButSignsNobodyIn)
{
    TestStore store;
    addUser(store.context());
    const Ref<TillShift> shift = store.saved(std::make_shared<TillShift>());
    store.reopen();
    AppEnvironment environment(store.context());
    SessionStore session;
    TestMarkets markets;
    CountingRelauncher relauncher(markets.registry);
    MarketSwitcher switcher(markets.registry, relauncher);
    MainWindow window(environment, session, markets.registry, switcher, "Front shop");
    EXPECT_EQ(window.windowTitle(), "Brindle — Front shop");
    window.show();
    ASSERT_NE(session.settings(), nullptr);
    ASSERT_NE(session.currentTillShift(), nullptr);
    EXPECT_EQ(session.currentTillShift()->id(), shift->id());
    EXPECT_EQ(session.currentUser(), nullptr);
    EXPECT_EQ(window.rootView()->screen(), RootView::Screen::signIn);
}
