#include "records/purchaseorder.h"

#include "records/records.h"

TALLY_RECORD_IMPL(PurchaseOrder, TALLY_PURCHASE_ORDER_FIELDS)
