#include "records/appointment.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Appointment, TALLY_APPOINTMENT_FIELDS)
