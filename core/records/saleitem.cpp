#include "records/saleitem.h"

#include "records/records.h"

TALLY_RECORD_IMPL(SaleItem, TALLY_SALE_ITEM_FIELDS)
