#include "records/payment.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Payment, TALLY_PAYMENT_FIELDS)
