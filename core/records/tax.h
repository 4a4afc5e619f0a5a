#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_TAX_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Number, rate, setRate, 0) \
    X(C, Flag, isCompound, setIsCompound, false) \
    X(C, Integer, sortOrder, setSortOrder, 0) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, ManyToManyInverse, groups, _, TaxGroup, taxes)
// clang-format on

class Tax final : public Record {
    TALLY_RECORD(Tax, TALLY_TAX_FIELDS)

public:
    static Ref<Tax> make(const QString& name, double rate, bool isCompound, qint64 sortOrder);

    QString label() const;
};
