#include "ui/navigation/poscommands.h"

#include "support/printers.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

TEST(POSCommands, SaleShortcutsActOnlyWhileTheWorkspaceIsActive)
{
    POSActionBus bus;
    QMainWindow window;
    auto* commands = new POSCommands(bus, &window);
    window.menuBar()->addMenu(commands);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    QStringList called;
    const auto record = [&called](const char* name) { return [&called, name] { called.append(name); }; };
    bus.setNewSale(record("newSale"));
    bus.setFindProduct(record("findProduct"));
    bus.setCompleteSale(record("completeSale"));
    bus.setHoldSale(record("holdSale"));
    bus.setRecallSale(record("recallSale"));
    bus.setPrintReceipt(record("printReceipt"));

    const QList<QAction*> items = commands->actions();
    ASSERT_EQ(items.size(), 6);
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(called, QStringList());
    EXPECT_FALSE(items[5]->isEnabled());

    bus.setIsPOSWorkspaceActive(true);
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    for (QAction* item : items)
        item->trigger();
    EXPECT_EQ(called, (QStringList{"newSale", "completeSale", "newSale", "findProduct", "completeSale",
                                   "holdSale", "recallSale", "printReceipt"}));

    // An action the workspace hasn't registered does nothing rather than fail.
    bus.setHoldSale({});
    items[3]->trigger();
    EXPECT_EQ(called.size(), 8);

    bus.setIsPOSWorkspaceActive(false);
    EXPECT_FALSE(items[0]->isEnabled());
}
