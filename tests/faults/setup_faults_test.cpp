// Accounts, first-run setup and new stores, failed at each of their calls into SQLite in turn.

#include "faultscene.h"

#include "access/firstrunsetupmodel.h"
#include "access/useraccountsviewmodel.h"
#include "stores/newmarketmodel.h"
#include "support/testmarkets.h"

TEST(Faults, AddUser)
{
    runFaultLoops("add user", [](FaultScene& scene) {
        auto model = std::make_shared<UserAccountsViewModel>(scene.context, scene.environment.authService(),
                                                             scene.session);
        model->setNewUserName(QStringLiteral("Yaw"));
        model->setNewUsername(QStringLiteral("yaw"));
        model->setNewPassword(QStringLiteral("secret1"));
        model->setNewPin(QStringLiteral("4321"));
        return FaultPlan{through(*model, [model] { return model->createUser(); }),
                         [model] { EXPECT_EQ(model->newUsername(), QStringLiteral("yaw")); },
                         [&scene] {
                             // Tried many times, made once.
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("User")), 2);
                         }};
    });
}

TEST(Faults, SetPin)
{
    runFaultLoops("set PIN", [](FaultScene& scene) {
        auto model = std::make_shared<UserAccountsViewModel>(scene.context, scene.environment.authService(),
                                                             scene.session);
        const Ref<User> cashier = scene.cashier;
        return FaultPlan{[model, cashier] { return model->savePin(cashier, QStringLiteral("2468")); },
                         [cashier] { EXPECT_EQ(cashier->pin(), std::nullopt); },
                         [cashier] { EXPECT_EQ(cashier->pin(), QStringLiteral("2468")); }};
    });
}

TEST(Faults, FirstRunSetup)
{
    runFaultLoops("first-run setup", [](FaultScene& scene) {
        scene.session.setCurrentUser(nullptr);
        auto model = std::make_shared<FirstRunSetupModel>(
            scene.context, [&scene] { return scene.environment.loadOrCreateSettings(); }, scene.session);
        model->setBusinessName(QStringLiteral("Osu Provisions"));
        model->setAdminName(QStringLiteral("Efua"));
        model->setAdminUsername(QStringLiteral("efua"));
        model->setAdminPassword(QStringLiteral("secret1"));
        model->setConfirmPassword(QStringLiteral("secret1"));
        const QString nameBefore = scene.settings->businessName();
        return FaultPlan{through(*model, [model] { return model->create(); }),
                         [&scene, nameBefore] {
                             EXPECT_EQ(scene.session.currentUser(), nullptr);
                             EXPECT_EQ(scene.settings->businessName(), nameBefore);
                         },
                         [&scene] {
                             EXPECT_EQ(scene.settings->businessName(), QStringLiteral("Osu Provisions"));
                             ASSERT_NE(scene.session.currentUser(), nullptr);
                             EXPECT_EQ(scene.session.currentUser()->username(), QStringLiteral("efua"));
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("User")), 2);
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("AppSettings")), 1);
                         }};
    });
}

// On a store with no settings yet, the settings record is made in the same unit as the admin.
TEST(Faults, FirstRunSetupOnANewStore)
{
    for (int code : injectedFaultCodes()) {
        TestStore store;
        AppEnvironment environment(store.context());
        SessionStore session;
        FirstRunSetupModel model(
            store.context(), [&] { return environment.loadOrCreateSettings(); }, session);
        model.setBusinessName(QStringLiteral("Osu Provisions"));
        model.setAdminName(QStringLiteral("Efua"));
        model.setAdminUsername(QStringLiteral("efua"));
        model.setAdminPassword(QStringLiteral("secret1"));
        model.setConfirmPassword(QStringLiteral("secret1"));
        const int failures = failEachCallUntilItSucceeds(store.context(), store.path(), code,
                                                         through(model, [&] { return model.create(); }));
        EXPECT_GT(failures, 0);
        EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("AppSettings")), 1);
        EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("User")), 1);
        std::cout << "[ faults   ] first-run setup on a new store, code " << code << ": " << failures
                  << " injected failures" << std::endl;
    }
}

// What a failure must leave: no file in Markets, nothing listed, the running store untouched.
TEST(Faults, NewStore)
{
    runFaultLoops("new store", [](FaultScene&) {
        auto markets = std::make_shared<TestMarkets>();
        const MarketInfo open = markets->registry.bootstrapIfNeeded();
        auto model = std::make_shared<NewMarketModel>(markets->registry);
        model->setMarketName(QStringLiteral("Osu"));
        model->setAdminName(QStringLiteral("Ama Mensah"));
        model->setAdminUsername(QStringLiteral("ama"));
        model->setAdminPassword(QStringLiteral("secret1"));
        model->setConfirmPassword(QStringLiteral("secret1"));
        return FaultPlan{through(*model, [model] { return model->create(); }),
                         [markets, open] {
                             EXPECT_EQ(markets->filesInMarkets(), QStringList());
                             EXPECT_EQ(markets->registry.allMarkets(), QList<MarketInfo>{open});
                         },
                         [markets] { EXPECT_EQ(markets->registry.allMarkets().size(), 2); }};
    });
}
