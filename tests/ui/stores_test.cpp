#include "records/user.h"
#include "startup/sessionstore.h"
#include "stores/marketswitcher.h"
#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"
#include "ui/navigation/posactionbus.h"
#include "ui/stores/marketcommands.h"
#include "ui/stores/newmarketsheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {
// A first store, and everything a switch or the New Store sheet reaches.
struct Markets : ::testing::Test {
    TestMarkets markets;
    MarketInfo first = markets.registry.bootstrapIfNeeded();
    CountingRelauncher relauncher{markets.registry};
    MarketSwitcher switcher{markets.registry, relauncher};
    POSActionBus bus;
    SessionStore session;

    void signIn(std::optional<UserRole> role)
    {
        Ref<User> user;
        if (role) {
            user = std::make_shared<User>();
            user->setRole(*role);
        }
        session.setCurrentUser(user);
    }
};
} // namespace

TEST_F(Markets, CommandsListEveryStoreAfreshSwitchToTheChosenOneAndAskForTheSheet)
{
    signIn(UserRole::admin);
    MarketCommands commands(markets.registry, switcher, bus, session);

    // Made after the menu was built, as the New Store sheet does.
    const MarketInfo added = markets.registry.createMarket("Salt & Light");
    Q_EMIT commands.switchStoreMenu()->aboutToShow();
    const QList<QAction*> stores = commands.switchStoreMenu()->actions();
    ASSERT_EQ(stores.size(), 2);
    EXPECT_EQ(stores[0]->text(), "Default Market");
    EXPECT_TRUE(stores[0]->isChecked());
    EXPECT_EQ(stores[1]->text(), "Salt && Light"); // an "&" shown, not made a shortcut key
    EXPECT_FALSE(stores[1]->isChecked());

    stores[0]->trigger();
    EXPECT_EQ(relauncher.count, 0);
    stores[1]->trigger();
    EXPECT_EQ(relauncher.activeAtRelaunch, added.id);

    commands.actions().last()->trigger();
    EXPECT_TRUE(bus.showNewMarketSheet());
}

TEST_F(Markets, NewStoreSheetCreatesTheTypedStoreAndSwitchingRelaunchesOnIt)
{
    NewMarketSheet sheet(markets.registry, switcher);
    sheet.show();
    sheet.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
    auto* confirm = sheet.findChild<QLineEdit*>("confirmPassword");
    auto* error = sheet.findChild<QLabel*>("errorMessage");

    // Typed as at the keyboard: each field, then Tab to the next.
    const QStringList typed = {"Osu Branch", "Ama Mensah", "ama", "secret1", "secret2"};
    for (qsizetype i = 0; i < typed.size(); ++i) {
        if (i > 0)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), typed[i]);
    }
    ASSERT_EQ(QApplication::focusWidget(), confirm);
    QTest::keyClick(confirm, Qt::Key_Return);
    EXPECT_TRUE(error->isVisible());
    EXPECT_EQ(error->text(), "Passwords don't match.");
    EXPECT_FALSE(sheet.isShowingCreated());

    confirm->clear();
    QTest::keyClicks(confirm, "secret1");
    QTest::keyClick(confirm, Qt::Key_Return);

    ASSERT_TRUE(sheet.isShowingCreated());
    const QList<MarketInfo> listed = markets.registry.allMarkets();
    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(
        sheet.findChild<QLabel*>("createdMessage")->text(),
        "\"Osu Branch\" is ready. Switch to it now to start using it — the app needs to restart to load "
        "its data.");
    EXPECT_EQ(relauncher.count, 0);

    sheet.findChild<QPushButton*>("switchAndRelaunch")->click();
    EXPECT_EQ(relauncher.count, 1);
    EXPECT_EQ(relauncher.activeAtRelaunch, listed[1].id);
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(Markets, CommandsAreForASignedInAdminOnly)
{
    MarketCommands commands(markets.registry, switcher, bus, session);
    QAction* newStore = commands.actions().last();
    for (const std::optional<UserRole> role : {std::optional<UserRole>(), std::optional(UserRole::cashier)}) {
        signIn(role);
        EXPECT_FALSE(commands.switchStoreMenu()->isEnabled());
        newStore->trigger();
        EXPECT_FALSE(bus.showNewMarketSheet());
    }
    signIn(UserRole::admin);
    EXPECT_TRUE(commands.switchStoreMenu()->isEnabled());
    newStore->trigger();
    EXPECT_TRUE(bus.showNewMarketSheet());
}
