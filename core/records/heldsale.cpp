#include "records/heldsale.h"

#include "records/records.h"

TALLY_RECORD_IMPL(HeldSale, TALLY_HELD_SALE_FIELDS)

double HeldSale::subtotal() const
{
    double sum = 0;
    for (const Ref<HeldSaleItem>& item : items())
        sum += item->unitPriceSnapshot() * item->quantity() - item->lineDiscount();
    return sum;
}
