#include "records/staffmember.h"

#include "records/records.h"

TALLY_RECORD_IMPL(StaffMember, TALLY_STAFF_MEMBER_FIELDS)
