#pragma once

#include "stock/inventoryservicing.h"
#include "store/modelcontext.h"

#include <optional>

class InventoryService : public InventoryServicing {
public:
    explicit InventoryService(ModelContext& context);

    Ref<InventoryMovement> recordDelivery(const Ref<Product>& product, double quantity,
                                          const QString& supplier, const QString& reason,
                                          std::optional<double> unitCost, const Ref<User>& by) override;
    void stockOut(const Ref<Product>& product, double quantity, const QString& reason,
                  const Ref<User>& by) override;
    void adjust(const Ref<Product>& product, double newQuantity, const QString& reason,
                const Ref<User>& by) override;
    void deductForSale(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                       bool allowNegativeStock, const Ref<User>& by) override;
    void restockForRefund(const Ref<Product>& product, double quantity, const Ref<Sale>& refund,
                          const Ref<User>& by) override;
    void restockForVoid(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                        const Ref<User>& by) override;

    // The moving average after a delivery, to 4 places. Stock at or below 0 counts as nothing on
    // hand: units sold short play no part in the average.
    static double averageCost(double stockBefore, double costBefore, double quantity, double unitCost);

private:
    // Sets the stock to stockBefore + change (to thousandths) and inserts the row for it.
    Ref<InventoryMovement> move(const Ref<Product>& product, InventoryMovementType type, double change,
                                const QString& reason, const Ref<User>& by);
    void restock(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                 InventoryMovementType type, const QString& reasonPrefix, const Ref<User>& by);

    ModelContext& m_context;
};
