#include "records/heldsale.h"

#include "records/records.h"

TALLY_RECORD_IMPL(HeldSale, TALLY_HELD_SALE_FIELDS)
