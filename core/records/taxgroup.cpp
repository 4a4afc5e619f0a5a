#include "records/taxgroup.h"

#include "records/records.h"

TALLY_RECORD_IMPL(TaxGroup, TALLY_TAX_GROUP_FIELDS)
