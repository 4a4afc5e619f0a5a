#pragma once

#include "startup/marketregistry.h"
#include "stores/apprelauncher.h"

// Counts restarts instead of doing them, noting which store was active when the last was asked for.
struct CountingRelauncher : AppRelauncher {
    explicit CountingRelauncher(MarketRegistry& registry)
        : registry(registry)
    {
    }
    void relaunch() override
    {
        ++count;
        activeAtRelaunch = registry.activeMarketID();
    }

    MarketRegistry& registry;
    int count = 0;
    QUuid activeAtRelaunch;
};
