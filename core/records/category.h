#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_CATEGORY_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Text, colorHex, setColorHex, "#8E8E93") \
    X(C, Integer, sortOrder, setSortOrder, 0) \
    X(C, ToMany, products, _, Product, category, Nullify)
// clang-format on

class Category final : public Record {
    TALLY_RECORD(Category, TALLY_CATEGORY_FIELDS)
};
