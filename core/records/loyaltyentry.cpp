#include "records/loyaltyentry.h"

#include "records/records.h"

TALLY_RECORD_IMPL(LoyaltyEntry, TALLY_LOYALTY_ENTRY_FIELDS)
