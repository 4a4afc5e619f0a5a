#include "environment/appenvironment.h"

#include "access/authservice.h"
#include "stock/inventoryservice.h"
#include "store/storeerror.h"

AppEnvironment::AppEnvironment(ModelContext& modelContext, std::unique_ptr<AuthServicing> authService,
                               std::unique_ptr<InventoryServicing> inventoryService)
    : m_modelContext(modelContext)
    , m_authService(authService ? std::move(authService) : std::make_unique<AuthService>(modelContext))
    , m_inventoryService(inventoryService ? std::move(inventoryService)
                                          : std::make_unique<InventoryService>(modelContext))
    , m_tillService(modelContext)
    , m_accountsService(modelContext)
    , m_loyaltyService(modelContext)
    , m_salesService(modelContext, *m_inventoryService)
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
