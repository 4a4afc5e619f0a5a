#include "stock/stockadjustmentmodel.h"

#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "stock/inventoryservice.h"

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
    const std::optional<double> value = NumberEntry::quantity(trimmed).value;
    if (value && *value > 0 && (!needsWholeNumber(unit) || *value == std::trunc(*value)))
        return {*value, {}};
    if (needsWholeNumber(unit))
        return {std::nullopt, QStringLiteral("Enter a whole number.")};
    return {std::nullopt, QStringLiteral("Enter an amount in %1, e.g. 2.5.").arg(SellingUnits::symbol(unit))};
}

NumberEntry StockAdjustmentModel::unitCostEntry() const
{
    return NumberEntry::money(m_unitCostText, NumberEntry::unitCostPlaces);
}

std::optional<double> StockAdjustmentModel::parsedUnitCost() const
{
    const std::optional<double> value = unitCostEntry().value;
    if (!value || *value < 0)
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
    bool applied = false;
    switch (m_mode) {
    case Mode::stockIn: {
        const NumberEntry cost = unitCostEntry();
        if (!cost.isValid()) {
            setErrorMessage(cost.problem);
            return false;
        }
        applied = saveOrUndo(m_context, [&] {
            m_inventory.recordDelivery(m_product, *quantity.value, m_supplier.trimmed(), m_reason.trimmed(),
                                       cost.value, by);
        });
        break;
    }
    case Mode::stockOut:
        applied = writing([&] { m_inventory.stockOut(m_product, *quantity.value, m_reason.trimmed(), by); });
        break;
    case Mode::adjust:
        applied = writing([&] { m_inventory.adjust(m_product, *quantity.value, m_reason.trimmed(), by); });
        break;
    }
    if (!applied)
        return false;
    if (m_onDismiss)
        m_onDismiss();
    return true;
}
