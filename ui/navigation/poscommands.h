#pragma once

#include "ui/navigation/posactionbus.h"

#include <QMenu>

// The "Sale" menu: the till's commands with their Ctrl shortcuts, handed to the POS workspace
// through the bus. Every item is disabled unless the workspace is on screen.
class POSCommands : public QMenu {
    Q_OBJECT

public:
    explicit POSCommands(POSActionBus& bus, QWidget* parent = nullptr);

private:
    void addCommand(const QString& text, const QList<QKeySequence>& shortcuts,
                    const POSActionBus::Action& (POSActionBus::*action)() const);

    POSActionBus& m_bus;
};
