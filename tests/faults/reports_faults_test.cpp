// The accounts of the journal export, failed at each of their calls into SQLite in turn.

#include "faultscene.h"

#include "store/storeerror.h"
#include "store/unitofwork.h"

TEST(Faults, SaveAccountMap)
{
    runFaultLoops("save account names and codes", [](FaultScene& scene) {
        AccountMap accounts;
        accounts.names.insert(QStringLiteral("cash"), QStringLiteral("Till 1"));
        accounts.codes.insert(QStringLiteral("sales"), QStringLiteral("4100"));
        const Ref<AppSettings> settings = scene.settings;
        const QString before = settings->accountingAccountsJSON();
        return FaultPlan{[&scene, settings, accounts]() -> std::optional<QString> {
                             try {
                                 scene.environment.accountingExportService().saveAccountMap(*settings,
                                                                                            accounts);
                                 return std::nullopt;
                             } catch (const StoreError& error) {
                                 return error.description();
                             }
                         },
                         [settings, before] { EXPECT_EQ(settings->accountingAccountsJSON(), before); },
                         [settings, accounts] {
                             EXPECT_EQ(AccountMap::decode(settings->accountingAccountsJSON()), accounts);
                         }};
    });
}
