#include "environment/appenvironment.h"

#include "access/authservice.h"
#include "stock/inventoryservice.h"
#include "store/unitofwork.h"

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
    // A failed read is not "no settings": a second record with defaults would restart the receipt
    // numbers at 1.
    return performUnitOfWork(m_modelContext, [this] {
        if (Ref<AppSettings> existing = m_modelContext.fetchFirst<AppSettings>())
            return existing;
        auto settings = std::make_shared<AppSettings>();
        m_modelContext.insert(settings);
        return Ref<AppSettings>(settings);
    });
}
