#include "records/tax.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Tax, TALLY_TAX_FIELDS)
