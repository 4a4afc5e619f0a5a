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
struct Markets : ::testing::Test {
    TestMarkets markets;
    MarketInfo first = markets.registry.bootstrapIfNeeded();
    CountingRelauncher relauncher{markets.registry};
    MarketSwitcher switcher{markets.registry, relauncher};
};
} // namespace

TEST_F(Markets, CommandsAreForASignedInAdminAndListEveryStoreAfresh)
{
    POSActionBus bus;
    SessionStore session;
    MarketCommands commands(markets.registry, switcher, bus, session);
    QAction* newStore = commands.actions().last();
    for (const auto role : {std::optional<UserRole>(), std::optional(UserRole::cashier), std::optional(UserRole::admin)}) {
        Ref<User> user;
        if (role) {
            user = std::make_shared<User>();
            user->setRole(*role);
        }
        session.setCurrentUser(user);
        EXPECT_EQ(commands.switchStoreMenu()->isEnabled(), role == UserRole::admin);
        newStore->trigger();
        EXPECT_EQ(bus.showNewMarketSheet(), role == UserRole::admin);
    }

    // Made after the menu was built, as the New Store sheet does.
    const MarketInfo added = markets.registry.createMarket("Salt & Light");
    Q_EMIT commands.switchStoreMenu()->aboutToShow();
    const QList<QAction*> stores = commands.switchStoreMenu()->actions();
    ASSERT_EQ(stores.size(), 2);
    EXPECT_TRUE(stores[0]->isChecked());
    EXPECT_EQ(stores[1]->text(), "Salt && Light"); // an "&" shown, not made a shortcut key
    stores[1]->trigger();
    EXPECT_EQ(relauncher.activeAtRelaunch, added.id);
}

// The refusals are the new-store model's; here the keyboard reaches it and Switch relaunches.
TEST_F(Markets, NewStoreSheetCreatesTheTypedStoreAndSwitchingRelaunchesOnIt)
{
    NewMarketSheet sheet(markets.registry, switcher);
    sheet.show();
    sheet.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet));
    auto* confirm = sheet.findChild<QLineEdit*>("confirmPassword");
    const QStringList typed = {"Osu Branch", "Ama Mensah", "ama", "secret1", "secret2"};
    for (qsizetype i = 0; i < typed.size(); ++i) {
        if (i > 0)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), typed[i]);
    }
    ASSERT_EQ(QApplication::focusWidget(), confirm);
    QTest::keyClick(confirm, Qt::Key_Return);
    EXPECT_TRUE(sheet.findChild<QLabel*>("errorMessage")->isVisible());
    EXPECT_FALSE(sheet.isShowingCreated());

    confirm->clear();
    QTest::keyClicks(confirm, "secret1");
    QTest::keyClick(confirm, Qt::Key_Return);
    ASSERT_TRUE(sheet.isShowingCreated());
    EXPECT_EQ(relauncher.count, 0);
    sheet.findChild<QPushButton*>("switchAndRelaunch")->click();
    EXPECT_EQ(relauncher.activeAtRelaunch, markets.registry.allMarkets().value(1).id);
    EXPECT_FALSE(sheet.isVisible());
}
