#pragma once

#include "access/authservicing.h"
#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "records/appsettings.h"
#include "selling/salesservice.h"
#include "stock/inventoryservicing.h"
#include "store/modelcontext.h"
#include "till/tillservice.h"

#include <memory>

// The program's services, built once on the one model context and shared by every screen.
class AppEnvironment {
public:
    // A service left out is built on the context; one handed in (a test double) is used instead.
    explicit AppEnvironment(ModelContext& modelContext, std::unique_ptr<AuthServicing> authService = nullptr,
                            std::unique_ptr<InventoryServicing> inventoryService = nullptr);
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;

    ModelContext& modelContext() const { return m_modelContext; }
    AuthServicing& authService() { return *m_authService; }
    TillService& tillService() { return m_tillService; }
    InventoryServicing& inventoryService() { return *m_inventoryService; }
    AccountsService& accountsService() { return m_accountsService; }
    LoyaltyService& loyaltyService() { return m_loyaltyService; }
    SalesService& salesService() { return m_salesService; }

    // The store's one settings record, made with its defaults when there is none, as a unit of
    // work (or part of the caller's). Throws StoreError when the store can't be read or the new
    // record can't be saved: the caller reports it and stops.
    Ref<AppSettings> loadOrCreateSettings();

private:
    ModelContext& m_modelContext;
    std::unique_ptr<AuthServicing> m_authService;
    std::unique_ptr<InventoryServicing> m_inventoryService;
    TillService m_tillService;
    AccountsService m_accountsService;
    LoyaltyService m_loyaltyService;
    SalesService m_salesService; // declared after the inventory service it stands on
};
