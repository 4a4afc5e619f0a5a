#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_TAX_GROUP_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Integer, sortOrder, setSortOrder, 0) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, ManyToMany, taxes, setTaxes, Tax) \
    X(C, ToMany, products, _, Product, taxGroup, Nullify)
// clang-format on

class TaxGroup final : public Record {
    TALLY_RECORD(TaxGroup, TALLY_TAX_GROUP_FIELDS)
};
