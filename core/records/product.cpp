#include "records/product.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Product, TALLY_PRODUCT_FIELDS)
