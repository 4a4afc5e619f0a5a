#pragma once

#include <QUuid>

class AppRelauncher;
class MarketRegistry;

// Changes the store the program runs on: the choice is recorded, then the program restarts on it.
class MarketSwitcher {
public:
    MarketSwitcher(MarketRegistry& registry, AppRelauncher& relauncher);

    // The store already open is left alone, with no restart. Nothing needs saving first: every
    // unit of work is saved as it ends.
    void switchTo(const QUuid& id);

private:
    MarketRegistry& m_registry;
    AppRelauncher& m_relauncher;
};
