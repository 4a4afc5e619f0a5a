#pragma once

#include "records/product.h"

#include <QString>
#include <QUuid>

#include <optional>

// One line of the sale being built. It holds the live product, so an untouched line follows a
// price change made elsewhere until the sale is rung up.
struct CartLine {
    QUuid id = QUuid::createUuid();
    Ref<Product> product; // never null
    double quantity = 0;
    // The cashier's own discount on the line: an amount, never a percentage.
    double lineDiscount = 0;
    std::optional<double> priceOverride;
    QString priceApprovedBy;
    QString priceReason;
    std::optional<QUuid> staffID;
    QString staffName;
    // The staff member's rate when chosen, so a later change of rate doesn't reach this sale.
    double staffCommissionRate = 0;

    double unitPrice() const;
    // Not rounded.
    double grossAmount() const { return unitPrice() * quantity; }

    friend bool operator==(const CartLine&, const CartLine&) = default;
};
