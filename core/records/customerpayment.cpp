#include "records/customerpayment.h"

#include "records/records.h"

TALLY_RECORD_IMPL(CustomerPayment, TALLY_CUSTOMER_PAYMENT_FIELDS)
