#pragma once

#include "ui/mainwindow.h"

#include "access/userbuilder.h"
#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "stores/marketswitcher.h"
#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"
#include "support/teststore.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

// The real main window on a fresh store, shown and active so that focus and shortcuts behave as
// they do for someone at the keyboard.
class WindowTest : public ::testing::Test {
protected:
    MainWindow& openWindow()
    {
        window = std::make_unique<MainWindow>(environment, session, markets.registry, switcher,
                                              QStringLiteral("Front shop"));
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }

    // The root's screen, when it is of that kind.
    template <class Screen> Screen* screen() const
    {
        return qobject_cast<Screen*>(window->rootView()->currentWidget());
    }

    static QWidget* focused() { return QApplication::focusWidget(); }

    TestStore store;
    AppEnvironment environment{store.context()};
    SessionStore session;
    TestMarkets markets;
    CountingRelauncher relauncher{markets.registry};
    MarketSwitcher switcher{markets.registry, relauncher};
    std::unique_ptr<MainWindow> window;
};
