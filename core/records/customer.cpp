#include "records/customer.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Customer, TALLY_CUSTOMER_FIELDS)
