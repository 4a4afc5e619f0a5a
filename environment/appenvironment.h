#pragma once

#include "records/appsettings.h"
#include "store/modelcontext.h"
#include "till/tillservice.h"

// The program's services, built once on the one model context and shared by every screen.
class AppEnvironment {
public:
    explicit AppEnvironment(ModelContext& modelContext);
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;

    ModelContext& modelContext() const { return m_modelContext; }
    TillService& tillService() { return m_tillService; }

    // The store's one settings record, made with its defaults when there is none. Never fails: a
    // read error counts as no record and a failed save leaves the new record in memory only.
    Ref<AppSettings> loadOrCreateSettings();

private:
    ModelContext& m_modelContext;
    TillService m_tillService;
};
