#include "records/appsettings.h"

#include "records/records.h"

TALLY_RECORD_IMPL(AppSettings, TALLY_APP_SETTINGS_FIELDS)
