#pragma once

#include "ui/navigation/editingscreen.h"

#include <QMenu>

class MarketRegistry;
class MarketSwitcher;
class POSActionBus;

// The "Store" menu: switching to another store on this machine, and making a new one.
class MarketCommands : public QMenu {
    Q_OBJECT

public:
    // "New Store…" raises the bus's showNewMarketSheet; the root shows the sheet while it is set.
    // A switch first passes `askToLeave`, so that unsaved edits are saved or dropped knowingly.
    MarketCommands(MarketRegistry& registry, MarketSwitcher& switcher, POSActionBus& bus,
                   QWidget* parent = nullptr, EditingScreen::LeaveCheck askToLeave = {});

    QMenu* switchStoreMenu() const { return m_switchStoreMenu; }

private:
    // Read afresh each time: a store may have been made since the menu was last open.
    void listStores();

    MarketRegistry& m_registry;
    MarketSwitcher& m_switcher;
    EditingScreen::LeaveCheck m_askToLeave;
    QMenu* m_switchStoreMenu;
};
