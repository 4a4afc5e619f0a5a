#include "environment/appenvironment.h"

#include "store/storeerror.h"

AppEnvironment::AppEnvironment(ModelContext& modelContext)
    : m_modelContext(modelContext)
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
