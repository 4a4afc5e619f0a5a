#pragma once

#include "money/taxcomponent.h"
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

public:
    static Ref<TaxGroup> make(const QString& name, const QList<Ref<Tax>>& taxes, qint64 sortOrder);

    QList<Ref<Tax>> sortedTaxes() const;
    // A compound tax is charged on the base plus the plain levies, so its share is expressed
    // as a fraction of the bare base.
    std::vector<TaxComponent> components() const;
};
