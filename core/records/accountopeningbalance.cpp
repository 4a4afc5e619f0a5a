#include "records/accountopeningbalance.h"

#include "records/records.h"

TALLY_RECORD_IMPL(AccountOpeningBalance, TALLY_ACCOUNT_OPENING_BALANCE_FIELDS)
