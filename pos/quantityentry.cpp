#include "pos/quantityentry.h"

#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"

#include <cmath>

QuantityEntry::QuantityEntry(Ref<Product> product, double unitPrice, std::optional<double> initialQuantity,
                             QString currencySymbol, QObject* parent)
    : ViewModel(parent)
    , m_product(std::move(product))
    , m_unitPrice(unitPrice)
    , m_editing(initialQuantity.has_value())
    , m_currencySymbol(std::move(currencySymbol))
    , m_text(initialQuantity ? Quantity::format(*initialQuantity) : QString())
{
    Q_ASSERT(m_product);
}

bool QuantityEntry::takesFractions(SellingUnit unit)
{
    switch (unit) {
    case SellingUnit::kg:
    case SellingUnit::litre:
    case SellingUnit::metre:
    case SellingUnit::hour:
        return true;
    case SellingUnit::each:
    case SellingUnit::g:
    case SellingUnit::ml:
        return false;
    }
    Q_UNREACHABLE();
}

double QuantityEntry::parse(const QString& text, SellingUnit unit)
{
    const std::optional<double> typed = NumberEntry::quantity(text).value;
    if (!typed || *typed <= 0)
        return 0;
    if (!takesFractions(unit) && *typed != std::trunc(*typed))
        return 0;
    return *typed;
}

QString QuantityEntry::fieldTitle() const
{
    switch (unit()) {
    case SellingUnit::hour:
        return QStringLiteral("Hours");
    case SellingUnit::each:
    case SellingUnit::g:
    case SellingUnit::ml:
        return QStringLiteral("Quantity");
    case SellingUnit::kg:
    case SellingUnit::litre:
    case SellingUnit::metre:
        return QStringLiteral("Weight / amount");
    }
    Q_UNREACHABLE();
}

std::optional<QString> QuantityEntry::hint() const
{
    if (m_text.trimmed().isEmpty() || value() > 0)
        return std::nullopt;
    return takesFractions(unit()) ? QStringLiteral("Enter an amount above zero, e.g. 1.5.")
                                  : QStringLiteral("Enter a whole number above zero.");
}

QString QuantityEntry::lineTotalText() const
{
    return Currency::format(value() * m_unitPrice, m_currencySymbol);
}

QString QuantityEntry::confirmText() const
{
    return m_editing ? QStringLiteral("Update") : QStringLiteral("Add to Sale");
}
