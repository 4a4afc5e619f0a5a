#include "records/tax.h"

#include "money/currency.h"
#include "records/records.h"

TALLY_RECORD_IMPL(Tax, TALLY_TAX_FIELDS)

Ref<Tax> Tax::make(const QString& name, double rate, bool isCompound, qint64 sortOrder)
{
    auto tax = std::make_shared<Tax>();
    tax->setName(name);
    tax->setRate(rate);
    tax->setIsCompound(isCompound);
    tax->setSortOrder(sortOrder);
    return tax;
}

QString Tax::label() const
{
    return QStringLiteral("%1 (%2)").arg(name(), Currency::percentText(rate()));
}
