#include "records/auditentry.h"

#include "records/records.h"

TALLY_RECORD_IMPL(AuditEntry, TALLY_AUDIT_ENTRY_FIELDS)
