#pragma once

#include "refusal/refusal.h"
#include "store/modelcontext.h"

class Product;

// A SKU or barcode that is already another product's; description() names that product.
class ProductCodeError : public Refusal {
public:
    using Refusal::Refusal;

    // Throws when `product`'s SKU (in any case) or barcode, trimmed as Save stores them, is held by
    // any other product.
    static void checkUnique(ModelContext& context, const Product& product);
};
