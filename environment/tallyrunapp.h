#pragma once

#include "environment/appenvironment.h"
#include "startup/marketinfo.h"
#include "startup/sessionstore.h"
#include "startup/storelock.h"
#include "store/modelcontainer.h"

#include <memory>
#include <optional>

class MarketRegistry;

// The program's object graph: the one open store, its context and the services on it. Built
// once before any window; a store switch or restore relaunches the process instead of
// rebuilding this.
class TallyrunApp {
public:
    // Opens the registry's active store, or the one it makes on a first run. Throws StartupError
    // when the store is already open in another process or can't be opened; nothing is left
    // open or locked then.
    TallyrunApp(MarketRegistry& registry, const QString& defaultStorePath);
    TallyrunApp(const TallyrunApp&) = delete;
    TallyrunApp& operator=(const TallyrunApp&) = delete;
    ~TallyrunApp();

    // AppProfile::supportDirectory()/default.store, where the "__default__" market lives.
    static QString defaultStorePath();
    static QString storePath(const MarketInfo& market, const MarketRegistry& registry,
                             const QString& defaultStorePath);

    const MarketInfo& market() const { return m_market; }
    ModelContainer& modelContainer() { return *m_modelContainer; }
    SessionStore& session();
    AppEnvironment& environment() { return *m_environment; }

    // Why the start-up repairs of the store were not made, for the first window to show; the
    // store is open and usable all the same.
    std::optional<QString> maintenanceProblem() const { return m_maintenanceProblem; }

    // The SKUs and barcodes that several products share, said once at each start until they are
    // put right; their unique indexes wait until then.
    std::optional<QString> sharedCodesNotice() const { return m_sharedCodesNotice; }

    // Lets the process that a relaunch starts open the store while this one winds down.
    void releaseStoreLock() { m_storeLock->release(); }

private:
    static std::optional<QString> checkProductCodes(SqliteConnection& connection);

    std::unique_ptr<SessionStore> m_session;
    MarketInfo m_market;
    std::unique_ptr<StoreLock> m_storeLock;
    std::unique_ptr<ModelContainer> m_modelContainer;
    std::unique_ptr<AppEnvironment> m_environment;
    std::optional<QString> m_maintenanceProblem;
    std::optional<QString> m_sharedCodesNotice;
};
