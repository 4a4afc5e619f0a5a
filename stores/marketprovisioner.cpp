#include "stores/marketprovisioner.h"

#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "clock/clock.h"
#include "records/appsettings.h"
#include "records/posschema.h"
#include "records/user.h"
#include "store/modelcontainer.h"
#include "store/unitofwork.h"
#include "stores/marketprovisioningerror.h"

void MarketProvisioner::provision(const QString& storePath, const QString& marketName,
                                  const QString& adminName, const QString& adminUsername,
                                  const QString& adminPassword)
{
    const QString name = marketName.trimmed();
    const QString admin = adminName.trimmed();
    // Lower-cased as first-run setup stores it, since sign-in looks the name up lower-cased.
    const QString username = adminUsername.trimmed().toLower();
    // The password is never trimmed, and counted in characters a person sees, as everywhere else.
    if (name.isEmpty() || admin.isEmpty() || username.isEmpty() ||
        characterCount(adminPassword) < PasswordHasher::minimumPasswordLength)
        throw MarketProvisioningError(MarketProvisioningError::Case::invalidInput);

    ModelContainer container(storePath, POSSchema::description());
    ModelContext& context = container.mainContext();
    UnitOfWork unit(context);

    auto settings = std::make_shared<AppSettings>();
    settings->setBusinessName(name);
    context.insert(settings);

    const QString salt = PasswordHasher::makeSalt();
    auto user = std::make_shared<User>();
    user->setName(admin);
    user->setUsername(username);
    user->setPasswordHash(PasswordHasher::hash(adminPassword, salt));
    user->setPasswordSalt(salt);
    user->setRole(UserRole::admin);
    user->setIsActive(true);
    user->setCreatedAt(Clock::now());
    context.insert(user);
    unit.commit();
}
