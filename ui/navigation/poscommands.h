#pragma once

#include "ui/navigation/posactionbus.h"

#include <QMenu>

// The "Sale" menu: the till's commands with their Ctrl shortcuts, handed to the POS workspace
// through the bus. Every item is disabled unless the workspace is on screen, but for "Find
// Product" on a screen that offers a search box.
class POSCommands : public QMenu {
    Q_OBJECT

public:
    explicit POSCommands(POSActionBus& bus, QWidget* parent = nullptr);

private:
    // Also enabled on a screen with a search box of its own, which it focuses.
    void addFindProduct();
    void addCommand(const QString& text, const QList<QKeySequence>& shortcuts,
                    const POSActionBus::Action& (POSActionBus::*action)() const);

    POSActionBus& m_bus;
};
