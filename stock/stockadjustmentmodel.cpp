#include "stock/stockadjustmentmodel.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "stock/inventoryerror.h"
#include "stock/inventoryservice.h"
#include "store/storeerror.h"

#include <QLocale>

#include <cmath>

namespace {
// Stock of grams and millilitres is booked in whole units, though the till sells fractions of them.
bool needsWholeNumber(SellingUnit unit)
{
    return unit == SellingUnit::each || unit == SellingUnit::g || unit == SellingUnit::ml;
}
} // namespace

StockAdjustmentModel::StockAdjustmentModel(InventoryServicing& inventory, ModelContext& context,
                                           SessionStore& session, Ref<Product> product,
                                           std::function<void()> onDismiss, QObject* parent)
    : ViewModel(parent)
    , m_inventory(inventory)
    , m_context(context)
    , m_session(session)
    , m_product(std::move(product))
    , m_onDismiss(std::move(onDismiss))
{
    Q_ASSERT(m_product);
    m_unitCostText =
        QString::number(Rounding::toPlaces(m_product->costPrice(), 4), 'f', QLocale::FloatingPointShortest);
}

void StockAdjustmentModel::setMode(Mode mode)
{
    if (replace(m_mode, mode))
        Q_EMIT modeChanged();
}

void StockAdjustmentModel::setQuantityText(const QString& text)
{
    assign(m_quantityText, text, &StockAdjustmentModel::quantityTextChanged);
}

void StockAdjustmentModel::setReason(const QString& text)
{
    assign(m_reason, text, &StockAdjustmentModel::reasonChanged);
}

void StockAdjustmentModel::setSupplier(const QString& text)
{
    assign(m_supplier, text, &StockAdjustmentModel::supplierChanged);
}

void StockAdjustmentModel::setUnitCostText(const QString& text)
{
    assign(m_unitCostText, text, &StockAdjustmentModel::unitCostTextChanged);
}

void StockAdjustmentModel::assign(QString& field, const QString& value,
                                  void (StockAdjustmentModel::*changed)())
{
    if (value == field)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

QString StockAdjustmentModel::title() const
{
    return QStringLiteral("Adjust Stock — %1").arg(m_product->name());
}

QString StockAdjustmentModel::quantityTitle() const
{
    return m_mode == Mode::adjust ? QStringLiteral("New Quantity") : QStringLiteral("Quantity");
}

QString StockAdjustmentModel::unitCostTitle() const
{
    const SellingUnit unit = m_product->sellingUnit();
    if (unit == SellingUnit::each)
        return QStringLiteral("Unit Cost");
    return QStringLiteral("Unit Cost (per %1)").arg(SellingUnits::symbol(unit));
}

QString StockAdjustmentModel::modeLabel(Mode mode)
{
    switch (mode) {
    case Mode::stockIn:
        return InventoryMovementTypes::label(InventoryMovementType::stockIn);
    case Mode::stockOut:
        return InventoryMovementTypes::label(InventoryMovementType::stockOut);
    case Mode::adjust:
        return QStringLiteral("Adjust");
    }
    Q_UNREACHABLE();
}

StockAdjustmentModel::ParsedQuantity StockAdjustmentModel::parsedQuantity() const
{
    const QString trimmed = m_quantityText.trimmed();
    // A count of nothing is a real answer to "how many are there?", but not to "how many came in?".
    if (m_mode == Mode::adjust && trimmed == QStringLiteral("0"))
        return {0.0, {}};

    const SellingUnit unit = m_product->sellingUnit();
    bool ok = false;
    const double value = Rounding::toThousandths(QString(trimmed).replace(u',', u'.').toDouble(&ok));
    const bool whole = !needsWholeNumber(unit) || value == std::trunc(value);
    if (ok && value > 0 && std::isfinite(value) && whole)
        return {value, {}};
    if (needsWholeNumber(unit))
        return {std::nullopt, QStringLiteral("Enter a whole number.")};
    return {std::nullopt, QStringLiteral("Enter an amount in %1, e.g. 2.5.").arg(SellingUnits::symbol(unit))};
}

std::optional<double> StockAdjustmentModel::parsedUnitCost() const
{
    // A money field: "," is not read as a decimal point.
    bool ok = false;
    const double value = m_unitCostText.trimmed().toDouble(&ok);
    if (!ok || !(value >= 0) || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QString StockAdjustmentModel::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

std::optional<QString> StockAdjustmentModel::costPreview() const
{
    if (m_mode != Mode::stockIn)
        return std::nullopt;
    const std::optional<double> quantity = parsedQuantity().value;
    const std::optional<double> cost = parsedUnitCost();
    if (!quantity || !cost)
        return std::nullopt;

    const double stock = m_product->stockQuantity();
    const double average = InventoryService::averageCost(stock, m_product->costPrice(), *quantity, *cost);
    if (stock <= 0)
        return QStringLiteral("New average %1 — nothing on hand, so it's the delivery's cost.")
            .arg(money(average));
    const SellingUnit unit = m_product->sellingUnit();
    return QStringLiteral("New average %1: %2 on hand at %3 + %4 delivered at %5.")
        .arg(money(average), Quantity::format(stock, unit), money(m_product->costPrice()),
             Quantity::format(*quantity, unit), money(*cost));
}

bool StockAdjustmentModel::apply()
{
    const ParsedQuantity quantity = parsedQuantity();
    if (!quantity.value) {
        setErrorMessage(quantity.error);
        return false;
    }
    const Ref<User> by = m_session.currentUser();
    try {
        switch (m_mode) {
        case Mode::stockIn: {
            const std::optional<double> cost = parsedUnitCost();
            if (!cost)
                throw InventoryError::invalidCost();
            m_inventory.recordDelivery(m_product, *quantity.value, m_supplier.trimmed(), m_reason.trimmed(),
                                       cost, by);
            m_context.save();
            break;
        }
        case Mode::stockOut:
            m_inventory.stockOut(m_product, *quantity.value, m_reason.trimmed(), by);
            break;
        case Mode::adjust:
            m_inventory.adjust(m_product, *quantity.value, m_reason.trimmed(), by);
            break;
        }
    } catch (const InventoryError& error) {
        setErrorMessage(error.description());
        return false;
    } catch (const StoreError& error) {
        // The service leaves a failed save pending; a second Apply must not book it twice.
        m_context.rollback();
        setErrorMessage(error.description());
        return false;
    }
    setErrorMessage(std::nullopt);
    if (m_onDismiss)
        m_onDismiss();
    return true;
}
