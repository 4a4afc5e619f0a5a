#include "records/sale.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Sale, TALLY_SALE_FIELDS)
