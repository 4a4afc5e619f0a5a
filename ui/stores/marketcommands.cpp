#include "ui/stores/marketcommands.h"

#include "startup/marketregistry.h"
#include "startup/sessionstore.h"
#include "stores/marketswitcher.h"
#include "ui/navigation/posactionbus.h"

MarketCommands::MarketCommands(MarketRegistry& registry, MarketSwitcher& switcher, POSActionBus& bus,
                               SessionStore& session, QWidget* parent, EditingScreen::LeaveCheck askToLeave)
    : QMenu(QStringLiteral("S&tore"), parent)
    , m_registry(registry)
    , m_switcher(switcher)
    , m_askToLeave(std::move(askToLeave))
    , m_switchStoreMenu(addMenu(QStringLiteral("Switch Store")))
{
    connect(m_switchStoreMenu, &QMenu::aboutToShow, this, &MarketCommands::listStores);
    listStores();
    m_newStore = addAction(QStringLiteral("New Store…"), this, [&bus] { bus.setShowNewMarketSheet(true); });
    const auto allowForAdmins = [this, &session] {
        m_switchStoreMenu->setEnabled(session.isAdmin());
        m_newStore->setEnabled(session.isAdmin());
    };
    allowForAdmins();
    connect(&session, &SessionStore::currentUserChanged, this, allowForAdmins);
}

void MarketCommands::listStores()
{
    m_switchStoreMenu->clear();
    const QUuid activeID = m_registry.activeMarketID();
    for (const MarketInfo& market : m_registry.allMarkets()) {
        // A store's name is the user's text: an "&" in it is shown, not taken as a shortcut key.
        QString label = market.name;
        QAction* item = m_switchStoreMenu->addAction(label.replace(QLatin1Char('&'), QStringLiteral("&&")));
        item->setCheckable(true);
        item->setChecked(market.id == activeID);
        const QUuid id = market.id;
        connect(item, &QAction::triggered, this, [this, id] {
            // The store open now is left alone: nothing to ask.
            if (id == m_registry.activeMarketID() || !m_askToLeave)
                m_switcher.switchTo(id);
            else
                m_askToLeave([this, id] { m_switcher.switchTo(id); });
        });
    }
}
