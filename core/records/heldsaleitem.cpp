#include "records/heldsaleitem.h"

#include "records/records.h"

TALLY_RECORD_IMPL(HeldSaleItem, TALLY_HELD_SALE_ITEM_FIELDS)
