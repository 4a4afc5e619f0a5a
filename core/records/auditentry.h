#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_AUDIT_ENTRY_FIELDS(X, C) \
    X(C, Date, timestamp, setTimestamp, ) \
    X(C, Text, actionRaw, setActionRaw, "") \
    X(C, Text, cashierName, setCashierName, "") \
    X(C, Text, approverName, setApproverName, "") \
    X(C, OptNumber, amount, setAmount, ) \
    X(C, Text, reference, setReference, "") \
    X(C, Text, reason, setReason, "") \
    X(C, Text, details, setDetails, "")
// clang-format on

class AuditEntry final : public Record {
    TALLY_RECORD(AuditEntry, TALLY_AUDIT_ENTRY_FIELDS)
};
