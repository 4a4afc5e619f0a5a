#include "records/purchaseorderline.h"

#include "records/records.h"

TALLY_RECORD_IMPL(PurchaseOrderLine, TALLY_PURCHASE_ORDER_LINE_FIELDS)
