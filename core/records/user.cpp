#include "records/user.h"

#include "records/records.h"

TALLY_RECORD_IMPL(User, TALLY_USER_FIELDS)
