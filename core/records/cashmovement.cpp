#include "records/cashmovement.h"

#include "records/records.h"

TALLY_RECORD_IMPL(CashMovement, TALLY_CASH_MOVEMENT_FIELDS)
