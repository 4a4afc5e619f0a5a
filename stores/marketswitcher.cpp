#include "stores/marketswitcher.h"

#include "startup/marketregistry.h"
#include "stores/apprelauncher.h"

MarketSwitcher::MarketSwitcher(MarketRegistry& registry, AppRelauncher& relauncher)
    : m_registry(registry)
    , m_relauncher(relauncher)
{
}

void MarketSwitcher::switchTo(const QUuid& id)
{
    if (id == m_registry.activeMarketID())
        return;
    m_registry.setActive(id);
    m_relauncher.relaunch();
}
