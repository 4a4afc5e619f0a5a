#include "records/tillshift.h"

#include "records/records.h"

TALLY_RECORD_IMPL(TillShift, TALLY_TILL_SHIFT_FIELDS)
