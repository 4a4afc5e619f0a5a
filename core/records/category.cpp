#include "records/category.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Category, TALLY_CATEGORY_FIELDS)
