#include "stock/inventoryservice.h"

#include "clock/clock.h"
#include "money/rounding.h"
#include "stock/inventoryerror.h"
#include "store/unitofwork.h"

#include <cmath>

namespace {
// NaN fails every comparison, so it is refused along with zero and below.
bool isPositiveQuantity(double quantity)
{
    return quantity > 0 && std::isfinite(quantity);
}

void requireTracked(const Product& product)
{
    if (!product.tracksStock())
        throw InventoryError::notStockTracked(product.name());
}
} // namespace

InventoryService::InventoryService(ModelContext& context)
    : m_context(context)
{
}

double InventoryService::averageCost(double stockBefore, double costBefore, double quantity, double unitCost)
{
    if (stockBefore <= 0)
        return Rounding::toPlaces(unitCost, 4);
    return Rounding::toPlaces((quantity * unitCost + stockBefore * costBefore) / (quantity + stockBefore), 4);
}

Ref<InventoryMovement> InventoryService::move(const Ref<Product>& product, InventoryMovementType type,
                                              double change, const QString& reason, const Ref<User>& by)
{
    const QDateTime now = Clock::now();
    product->setStockQuantity(Rounding::toThousandths(product->stockQuantity() + change));
    product->setUpdatedAt(now);

    auto movement = std::make_shared<InventoryMovement>();
    movement->setProduct(product);
    movement->setType(type);
    movement->setQuantityChange(change);
    movement->setStockAfter(product->stockQuantity());
    movement->setReason(reason);
    movement->setPerformedBy(by);
    movement->setTimestamp(now);
    m_context.insert(movement);
    return movement;
}

Ref<InventoryMovement> InventoryService::recordDelivery(const Ref<Product>& product, double quantity,
                                                        const QString& supplier, const QString& reason,
                                                        std::optional<double> unitCost, const Ref<User>& by)
{
    Q_ASSERT(product);
    requireTracked(*product);
    if (!isPositiveQuantity(quantity))
        throw InventoryError::invalidQuantity();
    if (unitCost && !(*unitCost >= 0 && std::isfinite(*unitCost)))
        throw InventoryError::invalidCost();

    const double stockBefore = product->stockQuantity();
    const double costBefore = product->costPrice();
    const auto type =
        supplier.isEmpty() ? InventoryMovementType::stockIn : InventoryMovementType::supplierDelivery;
    Ref<InventoryMovement> movement = move(product, type, quantity, reason, by);
    movement->setSupplier(supplier);
    if (!unitCost)
        return movement;

    const double costAfter = averageCost(stockBefore, costBefore, quantity, *unitCost);
    movement->setUnitCost(Rounding::toPlaces(*unitCost, 4));
    movement->setCostBefore(costBefore);
    movement->setCostAfter(costAfter);
    product->setCostPrice(costAfter);
    return movement;
}

void InventoryService::stockOut(const Ref<Product>& product, double quantity, const QString& reason,
                                const Ref<User>& by)
{
    Q_ASSERT(product);
    requireTracked(*product);
    if (!isPositiveQuantity(quantity))
        throw InventoryError::invalidQuantity();
    performUnitOfWork(m_context,
                      [&] { move(product, InventoryMovementType::stockOut, -quantity, reason, by); });
}

void InventoryService::adjust(const Ref<Product>& product, double newQuantity, const QString& reason,
                              const Ref<User>& by)
{
    Q_ASSERT(product);
    requireTracked(*product);
    if (!(newQuantity >= 0 && std::isfinite(newQuantity)))
        throw InventoryError::invalidQuantity();
    performUnitOfWork(m_context, [&] {
        move(product, InventoryMovementType::adjustment, newQuantity - product->stockQuantity(), reason, by);
    });
}

void InventoryService::deductForSale(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                                     bool allowNegativeStock, const Ref<User>& by)
{
    Q_ASSERT(product && sale);
    if (!isPositiveQuantity(quantity))
        throw InventoryError::invalidQuantity();
    if (!product->tracksStock())
        return;
    if (!allowNegativeStock && product->stockQuantity() < quantity)
        throw InventoryError::insufficientStock(product->name(), product->stockQuantity(), quantity);
    const Ref<InventoryMovement> movement = move(product, InventoryMovementType::saleDeduction, -quantity,
                                                 QStringLiteral("Sale ") + sale->invoiceNumber(), by);
    movement->setRelatedSale(sale);
}

void InventoryService::restock(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                               InventoryMovementType type, const QString& reasonPrefix, const Ref<User>& by)
{
    Q_ASSERT(product && sale);
    if (!isPositiveQuantity(quantity))
        throw InventoryError::invalidQuantity();
    if (!product->tracksStock())
        return;
    const Ref<InventoryMovement> movement =
        move(product, type, quantity, reasonPrefix + sale->invoiceNumber(), by);
    movement->setRelatedSale(sale);
}

void InventoryService::restockForRefund(const Ref<Product>& product, double quantity, const Ref<Sale>& refund,
                                        const Ref<User>& by)
{
    restock(product, quantity, refund, InventoryMovementType::returnRestock, QStringLiteral("Refund "), by);
}

void InventoryService::restockForVoid(const Ref<Product>& product, double quantity, const Ref<Sale>& sale,
                                      const Ref<User>& by)
{
    restock(product, quantity, sale, InventoryMovementType::voidRestock, QStringLiteral("Void "), by);
}
