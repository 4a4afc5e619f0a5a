#pragma once

#include "benchstores.h"

#include "records/posschema.h"
#include "records/records.h"
#include "selling/salesservice.h"
#include "stock/inventoryservice.h"
#include "store/modelcontainer.h"

// The writable copy of the five-year store with the sales service on it, its settings and the
// first user to write as. Header only: bench_support stands below the services.
struct WritableStore {
    ModelContainer container{fiveYearStoreCopy(), POSSchema::description()};
    ModelContext& context = container.mainContext();
    InventoryService inventory{context};
    SalesService sales{context, inventory};
    Ref<AppSettings> settings = context.fetchFirst<AppSettings>();
    Ref<User> cashier = context.fetchFirst<User>();
};
