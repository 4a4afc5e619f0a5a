#include "selling/cartline.h"

double CartLine::unitPrice() const
{
    Q_ASSERT(product);
    return priceOverride.value_or(product->sellingPrice());
}
