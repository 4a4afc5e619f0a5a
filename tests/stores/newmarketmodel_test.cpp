#include "stores/newmarketmodel.h"

#include "store/storeerror.h"
#include "stores/marketprovisioner.h"
#include "support/printers.h"
#include "support/testmarkets.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {
void fill(NewMarketModel& model, const QString& market, const QString& password, const QString& confirm)
{
    model.setMarketName(market);
    model.setAdminName(QStringLiteral("Ama Mensah"));
    model.setAdminUsername(QStringLiteral("ama"));
    model.setAdminPassword(password);
    model.setConfirmPassword(confirm);
}
} // namespace

TEST(NewMarketModel, FailuresListNothingAndLeaveNoFile)
{
    TestMarkets markets;
    const MarketInfo open = markets.registry.bootstrapIfNeeded();
    NewMarketModel model(markets.registry);

    fill(model, "", "123", "456"); // the mismatch is told before anything else
    EXPECT_FALSE(model.create());
    EXPECT_EQ(model.errorMessage(), "Passwords don't match.");

    fill(model, "Osu", "12345", "12345");
    EXPECT_FALSE(model.create());
    EXPECT_EQ(model.errorMessage(),
              "Enter a market name, admin username, and a password of at least 6 characters.");

    NewMarketModel failingSave(markets.registry, [](const QString& path, const QString& market,
                                                    const QString& admin, const QString& username,
                                                    const QString& password) {
        MarketProvisioner::provision(path, market, admin, username, password);
        throw StoreError(QStringLiteral("The store couldn't be saved. disk I/O error"));
    });
    fill(failingSave, "Osu", "secret1", "secret1");
    EXPECT_FALSE(failingSave.create());
    EXPECT_EQ(failingSave.errorMessage(), "The store couldn't be saved. disk I/O error");

    EXPECT_EQ(markets.registry.allMarkets(), QList<MarketInfo>{open});
    EXPECT_EQ(markets.filesInMarkets(), QStringList()); // the half-made file went too
}

TEST(NewMarketModel, ListsTheNewStoreUnderItsFileWithoutSwitchingToIt)
{
    TestMarkets markets;
    const MarketInfo open = markets.registry.bootstrapIfNeeded();
    NewMarketModel model(markets.registry);
    fill(model, " Osu Branch ", "secret1", "nope");
    model.create();
    fill(model, " Osu Branch ", "secret1", "secret1");

    ASSERT_TRUE(model.create());

    EXPECT_EQ(model.errorMessage(), std::nullopt);
    const QList<MarketInfo> listed = markets.registry.allMarkets();
    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(listed[1], model.createdMarket());
    EXPECT_EQ(listed[1].name, "Osu Branch");
    EXPECT_TRUE(QRegularExpression("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.store$")
                    .match(listed[1].storeFileName)
                    .hasMatch())
        << listed[1].storeFileName.toStdString();
    EXPECT_EQ(markets.filesInMarkets(), QStringList{listed[1].storeFileName});
    EXPECT_EQ(markets.registry.activeMarket(), open);
}
