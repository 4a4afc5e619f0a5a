#include "records/inventorymovement.h"

#include "records/records.h"

TALLY_RECORD_IMPL(InventoryMovement, TALLY_INVENTORY_MOVEMENT_FIELDS)
