#include "ui/stores/newmarketsheet.h"

#include "stores/marketswitcher.h"
#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

TEST(NewMarketSheet, TypedFormCreatesTheStoreAndSwitchingRelaunchesOnIt)
{
    TestMarkets markets;
    markets.registry.bootstrapIfNeeded();
    CountingRelauncher relauncher(markets.registry);
    MarketSwitcher switcher(markets.registry, relauncher);
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
