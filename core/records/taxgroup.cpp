#include "records/taxgroup.h"

#include "records/records.h"

TALLY_RECORD_IMPL(TaxGroup, TALLY_TAX_GROUP_FIELDS)

Ref<TaxGroup> TaxGroup::make(const QString& name, const QList<Ref<Tax>>& taxes, qint64 sortOrder)
{
    auto group = std::make_shared<TaxGroup>();
    group->setName(name);
    group->setTaxes(taxes);
    group->setSortOrder(sortOrder);
    return group;
}

QList<Ref<Tax>> TaxGroup::sortedTaxes() const
{
    QList<Ref<Tax>> sorted = taxes();
    std::stable_sort(sorted.begin(), sorted.end(), [](const Ref<Tax>& a, const Ref<Tax>& b) {
        if (a->sortOrder() != b->sortOrder())
            return a->sortOrder() < b->sortOrder();
        return a->name() < b->name();
    });
    return sorted;
}

std::vector<TaxComponent> TaxGroup::components() const
{
    const QList<Ref<Tax>> sorted = sortedTaxes();
    double factor = 1;
    for (const Ref<Tax>& tax : sorted) {
        if (!tax->isCompound())
            factor += tax->rate();
    }
    std::vector<TaxComponent> result;
    result.reserve(size_t(sorted.size()));
    for (const Ref<Tax>& tax : sorted)
        result.push_back({tax->label(), tax->isCompound() ? factor * tax->rate() : tax->rate()});
    return result;
}
