#include "environment/appenvironment.h"

#include "access/authservice.h"
#include "store/storeerror.h"

AppEnvironment::AppEnvironment(ModelContext& modelContext, std::unique_ptr<AuthServicing> authService)
    : m_modelContext(modelContext)
    , m_authService(authService ? std::move(authService) : std::make_unique<AuthService>(modelContext))
    , m_tillService(modelContext)
{
}

Ref<AppSettings> AppEnvironment::loadOrCreateSettings()
{
    try {
        if (Ref<AppSettings> existing = m_modelContext.fetchFirst<AppSettings>())
            return existing;
    } catch (const StoreError&) {
    }
    auto settings = std::make_shared<AppSettings>();
    m_modelContext.insert(settings);
    try {
        m_modelContext.save();
    } catch (const StoreError&) {
    }
    return settings;
}
