#pragma once

#include "ui/navigation/editingscreen.h"

#include <QMenu>

class MarketRegistry;
class MarketSwitcher;
class POSActionBus;
class QAction;
class SessionStore;

// The "Store" menu: switching to another store on this machine, and making a new one. Both are
// for a signed-in admin: a cashier, or nobody at the sign-in screen, finds them greyed out.
class MarketCommands : public QMenu {
    Q_OBJECT

public:
    // "New Store…" raises the bus's showNewMarketSheet; the root shows the sheet while it is set.
    // A switch first passes `askToLeave`, so that unsaved edits are saved or dropped knowingly.
    MarketCommands(MarketRegistry& registry, MarketSwitcher& switcher, POSActionBus& bus, SessionStore& session,
                   QWidget* parent = nullptr, EditingScreen::LeaveCheck askToLeave = {});

    QMenu* switchStoreMenu() const { return m_switchStoreMenu; }

private:
    // Read afresh each time: a store may have been made since the menu was last open.
    void listStores();

    MarketRegistry& m_registry;
    MarketSwitcher& m_switcher;
    EditingScreen::LeaveCheck m_askToLeave;
    QMenu* m_switchStoreMenu;
    QAction* m_newStore;
};
