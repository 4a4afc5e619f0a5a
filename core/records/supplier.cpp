#include "records/supplier.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Supplier, TALLY_SUPPLIER_FIELDS)
