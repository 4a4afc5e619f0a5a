#include "environment/tallyrunapp.h"

#include "environment/startuperror.h"
#include "environment/storemaintenance.h"
#include "records/posschema.h"
#include "records/productcodeindex.h"
#include "startup/appprofile.h"
#include "startup/marketregistry.h"
#include "store/storeerror.h"

#include <QDir>
#include <QFileInfo>

TallyrunApp::TallyrunApp(MarketRegistry& registry, const QString& defaultStorePath)
{
    // The session is made on first use (session()).
    SchemaDescription schema = POSSchema::description();

    m_market = registry.bootstrapIfNeeded();
    const QString path = storePath(m_market, registry, defaultStorePath);

    m_storeLock = std::make_unique<StoreLock>(path);
    switch (m_storeLock->tryAcquire()) {
    case StoreLock::Outcome::acquired:
        break;
    case StoreLock::Outcome::heldElsewhere:
        throw StartupError(QStringLiteral("This store is already open in another Brindle window."));
    case StoreLock::Outcome::cannotBeMade:
        throw StartupError(QStringLiteral("Brindle can't write in the store's folder (%1), so it can't make "
                                          "sure no other window has this store open. Check that the folder "
                                          "can be written to, then start Brindle again.")
                               .arg(QDir::toNativeSeparators(QFileInfo(m_storeLock->path()).path())));
    }

    try {
        m_modelContainer = std::make_unique<ModelContainer>(path, std::move(schema));
    } catch (const StoreError& error) {
        throw StartupError(
            QStringLiteral("The store container could not be created. %1").arg(error.description()));
    }
    ModelContext& context = m_modelContainer->mainContext();

    m_maintenanceProblem = StoreMaintenance::run(context);
    m_sharedCodesNotice = checkProductCodes(context.connection());

    m_environment = std::make_unique<AppEnvironment>(context);
}

TallyrunApp::~TallyrunApp() = default;

QString TallyrunApp::defaultStorePath()
{
    return AppProfile::supportDirectory() + QStringLiteral("/default.store");
}

QString TallyrunApp::storePath(const MarketInfo& market, const MarketRegistry& registry,
                               const QString& defaultStorePath)
{
    if (market.isDefaultStore())
        return defaultStorePath;
    return QDir(registry.marketsDirectory()).filePath(market.storeFileName);
}

std::optional<QString> TallyrunApp::checkProductCodes(SqliteConnection& connection)
{
    QStringList shared;
    try {
        shared = ProductCodeIndex::ensure(connection);
    } catch (const StoreError& error) {
        // The store still opens; the indexes are tried again at the next start.
        qCWarning(lcStore) << "Unique product codes were not checked:" << error.description();
        return std::nullopt;
    }
    if (shared.isEmpty())
        return std::nullopt;
    // Which product keeps a code is the owner's call, so nothing is changed here.
    qCWarning(lcStore) << "Products share codes:" << shared;
    return QStringLiteral("Some products share a SKU or barcode, so a scan can't tell them apart. Give each "
                          "its own in Products:\n\n%1")
        .arg(shared.join(QLatin1Char('\n')));
}

SessionStore& TallyrunApp::session()
{
    if (!m_session)
        m_session = std::make_unique<SessionStore>();
    return *m_session;
}
