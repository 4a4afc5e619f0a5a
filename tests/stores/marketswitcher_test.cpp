#include "stores/marketswitcher.h"

#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"

#include <gtest/gtest.h>

TEST(MarketSwitcher, RestartsOnlyForAnotherStoreAndOnlyOnceItIsRecorded)
{
    TestMarkets markets;
    const MarketInfo open = markets.registry.bootstrapIfNeeded();
    const MarketInfo other = markets.registry.createMarket("Osu");
    CountingRelauncher relauncher(markets.registry);
    MarketSwitcher switcher(markets.registry, relauncher);

    switcher.switchTo(open.id);
    EXPECT_EQ(relauncher.count, 0);
    EXPECT_EQ(markets.registry.activeMarket(), open);

    switcher.switchTo(other.id);
    EXPECT_EQ(relauncher.count, 1);
    // The new process reads the choice at start, so it must be stored before the restart.
    EXPECT_EQ(relauncher.activeAtRelaunch, other.id);
    EXPECT_EQ(markets.registry.activeMarket(), other);
}
