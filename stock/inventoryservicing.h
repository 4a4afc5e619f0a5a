#pragma once

#include "records/inventorymovement.h"
#include "records/product.h"
#include "records/sale.h"
#include "records/user.h"

#include <QString>

#include <optional>

// The only writer of Product.stockQuantity: every change writes one InventoryMovement. Refusals
// throw InventoryError before anything is changed; StoreError from a save goes out untouched.
// `by` may be null.
class InventoryServicing {
public:
    virtual ~InventoryServicing() = default;

    // Moves the average cost when unitCost is given. Doesn't save: a purchase order books several
    // lines and saves once.
    virtual Ref<InventoryMovement> recordDelivery(const Ref<Product>& product, double quantity,
                                                  const QString& supplier, const QString& reason,
                                                  std::optional<double> unitCost, const Ref<User>& by) = 0;
    // Saves. May take the stock below 0, whatever the settings say.
    virtual void stockOut(const Ref<Product>& product, double quantity, const QString& reason,
                          const Ref<User>& by) = 0;
    // Saves. Writes a row even when nothing changes, as a record of the count.
    virtual void adjust(const Ref<Product>& product, double newQuantity, const QString& reason,
                        const Ref<User>& by) = 0;
    // Part of checkout, which saves. Products that don't track stock are passed over silently.
    virtual void deductForSale(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                               bool allowNegativeStock, const Ref<User>& by) = 0;
    // `refund` is the refund's own row. Never touches the cost. Doesn't save.
    virtual void restockForRefund(const Ref<Product>& product, double quantity, const Ref<Sale>& refund,
                                  const Ref<User>& by) = 0;
    virtual void restockForVoid(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                                const Ref<User>& by) = 0;
};
