#include "access/autherror.h"
#include "access/authservice.h"
#include "clock/clock.h"
#include "records/appsettings.h"
#include "records/posschema.h"
#include "records/user.h"
#include "stores/marketprovisioner.h"
#include "stores/marketprovisioningerror.h"
#include "stores/marketswitcher.h"
#include "stores/newmarketmodel.h"
#include "support/countingrelauncher.h"
#include "support/printers.h"
#include "support/testmarkets.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

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

// A failed save is in the fault loop.
TEST(NewMarketModel, ListsTheNewStoreWithoutSwitchingToIt)
{
    TestMarkets markets;
    const MarketInfo open = markets.registry.bootstrapIfNeeded();
    NewMarketModel model(markets.registry);
    fill(model, "", "123", "456"); // the mismatch is told before anything else
    EXPECT_FALSE(model.create());
    EXPECT_EQ(model.errorMessage(), "Passwords don't match.");

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

TEST(MarketProvisioner, RefusesIncompleteInputBeforeMakingAFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("New.store");
    const struct {
        const char* fault;
        const char *market, *admin, *username, *password;
    } cases[] = {
        {"blank market name", " \t", "Ama", "ama", "secret1"},
        {"blank admin name", "Osu", "\n", "ama", "secret1"},
        {"blank username", "Osu", "Ama", "  ", "secret1"},
        {"password of 5 characters", "Osu", "Ama", "ama", "12345"},
        {"password counted in UTF-16 units", "Osu", "Ama", "ama", "😀😀😀"},
    };
    for (const auto& c : cases) {
        try {
            MarketProvisioner::provision(path, c.market, c.admin, c.username, QString::fromUtf8(c.password));
            ADD_FAILURE() << c.fault << ": accepted";
        } catch (const MarketProvisioningError& error) {
            EXPECT_EQ(error.description(),
                      "Enter a market name, admin username, and a password of at least 6 characters.")
                << c.fault;
        }
        EXPECT_FALSE(QFileInfo::exists(path)) << c.fault;
    }
}

TEST(MarketProvisioner, MakesAClosedStoreWithItsSettingsAndAnAdminWhoCanSignIn)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("New.store");
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1720000000);
    Clock::Override clock(now);

    MarketProvisioner::provision(path, "  Osu Branch ", " Ama Mensah\t", " AMA ", " pass 1");

    // Dropped: SQLite removes the log only when the last connection closes.
    EXPECT_FALSE(QFileInfo::exists(path + "-wal"));
    ModelContainer container(path, POSSchema::description());
    ModelContext& context = container.mainContext();
    const QList<Ref<AppSettings>> settings = context.fetch<AppSettings>();
    ASSERT_EQ(settings.size(), 1);
    EXPECT_EQ(settings[0]->businessName(), "Osu Branch");
    const QList<Ref<User>> users = context.fetch<User>();
    ASSERT_EQ(users.size(), 1);
    EXPECT_EQ(users[0]->name(), "Ama Mensah");
    EXPECT_EQ(users[0]->username(), "ama");
    EXPECT_EQ(users[0]->roleRaw(), "admin");
    EXPECT_EQ(users[0]->createdAt(), now);

    AuthService auth(context);
    EXPECT_EQ(auth.login("Ama", " pass 1"), users[0]);
    EXPECT_THROW(auth.login("ama", "pass 1"), AuthError); // the password is kept as typed
}

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
