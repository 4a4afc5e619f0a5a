#include "enums.h"

#include <QStringList>

// Reads raw through the enumeration's own raw() so that the texts are written down only once.
template <typename Enum, typename Range, typename RawOf>
static std::optional<Enum> findRaw(const QString& raw, const Range& values, RawOf rawOf)
{
    for (Enum value : values) {
        if (rawOf(value) == raw)
            return value;
    }
    return std::nullopt;
}

static constexpr std::array<ProductType, 3> allProductTypes{ProductType::inventory, ProductType::nonInventory,
                                                            ProductType::service};
static constexpr std::array<SaleStatus, 4> allSaleStatuses{
    SaleStatus::completed, SaleStatus::partiallyRefunded, SaleStatus::refunded, SaleStatus::voided};
static constexpr std::array<UserRole, 2> allUserRoles{UserRole::admin, UserRole::cashier};

QString ProductTypes::raw(ProductType type)
{
    switch (type) {
    case ProductType::inventory:
        return QStringLiteral("inventory");
    case ProductType::nonInventory:
        return QStringLiteral("nonInventory");
    case ProductType::service:
        return QStringLiteral("service");
    }
    Q_UNREACHABLE();
}

ProductType ProductTypes::fromRaw(const QString& raw)
{
    return findRaw<ProductType>(raw, allProductTypes, &ProductTypes::raw).value_or(ProductType::inventory);
}

QString ProductTypes::label(ProductType type)
{
    switch (type) {
    case ProductType::inventory:
        return QStringLiteral("Inventory Item");
    case ProductType::nonInventory:
        return QStringLiteral("Non-Inventory Item");
    case ProductType::service:
        return QStringLiteral("Service");
    }
    Q_UNREACHABLE();
}

std::optional<ProductType> ProductTypes::parse(const QString& text)
{
    // Spreadsheets write "Non-Inventory Item", "non inventory" and the like: compare letters only.
    QString letters;
    for (QChar c : text.toLower()) {
        if (c.isLetter())
            letters += c;
    }
    static const QStringList inventory{"inventory", "inventoryitem", "stock", "stocked"};
    static const QStringList nonInventory{"noninventory", "noninventoryitem", "nonstock", "nonstocked"};
    static const QStringList service{"service", "services"};
    if (inventory.contains(letters))
        return ProductType::inventory;
    if (nonInventory.contains(letters))
        return ProductType::nonInventory;
    if (service.contains(letters))
        return ProductType::service;
    return std::nullopt;
}

QString SellingUnits::raw(SellingUnit unit)
{
    switch (unit) {
    case SellingUnit::each:
        return QStringLiteral("each");
    case SellingUnit::kg:
        return QStringLiteral("kg");
    case SellingUnit::g:
        return QStringLiteral("g");
    case SellingUnit::litre:
        return QStringLiteral("litre");
    case SellingUnit::ml:
        return QStringLiteral("ml");
    case SellingUnit::metre:
        return QStringLiteral("metre");
    case SellingUnit::hour:
        return QStringLiteral("hour");
    }
    Q_UNREACHABLE();
}

SellingUnit SellingUnits::fromRaw(const QString& raw)
{
    return findRaw<SellingUnit>(raw, all, &SellingUnits::raw).value_or(SellingUnit::each);
}

QString SellingUnits::symbol(SellingUnit unit)
{
    switch (unit) {
    case SellingUnit::each:
        return {};
    case SellingUnit::kg:
        return QStringLiteral("kg");
    case SellingUnit::g:
        return QStringLiteral("g");
    case SellingUnit::litre:
        return QStringLiteral("L");
    case SellingUnit::ml:
        return QStringLiteral("ml");
    case SellingUnit::metre:
        return QStringLiteral("m");
    case SellingUnit::hour:
        return QStringLiteral("hr");
    }
    Q_UNREACHABLE();
}

QString SellingUnits::label(SellingUnit unit)
{
    switch (unit) {
    case SellingUnit::each:
        return QStringLiteral("Each (whole units)");
    case SellingUnit::kg:
        return QStringLiteral("Kilogram (kg)");
    case SellingUnit::g:
        return QStringLiteral("Gram (g)");
    case SellingUnit::litre:
        return QStringLiteral("Litre (L)");
    case SellingUnit::ml:
        return QStringLiteral("Millilitre (ml)");
    case SellingUnit::metre:
        return QStringLiteral("Metre (m)");
    case SellingUnit::hour:
        return QStringLiteral("Hour (hr)");
    }
    Q_UNREACHABLE();
}

bool SellingUnits::allowsFractions(SellingUnit unit)
{
    return unit != SellingUnit::each;
}

std::optional<SellingUnit> SellingUnits::parse(const QString& text)
{
    const QString key = text.trimmed().toLower();
    if (key.isEmpty())
        return std::nullopt;
    struct Alias {
        SellingUnit unit;
        QStringList texts;
    };
    static const std::array<Alias, 7> aliases{{
        {SellingUnit::each, {"each", "ea", "unit", "units", "pc", "pcs", "piece"}},
        {SellingUnit::kg, {"kg", "kilo", "kilogram", "kilograms"}},
        {SellingUnit::g, {"g", "gram", "grams"}},
        {SellingUnit::litre, {"l", "litre", "liter", "litres", "liters", "ltr"}},
        {SellingUnit::ml, {"ml", "millilitre", "milliliter"}},
        {SellingUnit::metre, {"m", "metre", "meter", "metres", "meters"}},
        {SellingUnit::hour, {"hr", "hour", "hours", "h"}},
    }};
    for (const Alias& alias : aliases) {
        if (alias.texts.contains(key))
            return alias.unit;
    }
    return std::nullopt;
}

QString SellingUnits::fractionHint()
{
    return QStringLiteral(
        "Kilogram, litre, metre and hour can be sold in fractions (1.5 kg); the till asks for the amount.");
}

QString PaymentMethodTypes::raw(PaymentMethodType method)
{
    switch (method) {
    case PaymentMethodType::cash:
        return QStringLiteral("cash");
    case PaymentMethodType::card:
        return QStringLiteral("card");
    case PaymentMethodType::mobileMoney:
        return QStringLiteral("mobileMoney");
    case PaymentMethodType::other:
        return QStringLiteral("other");
    case PaymentMethodType::onAccount:
        return QStringLiteral("onAccount");
    }
    Q_UNREACHABLE();
}

PaymentMethodType PaymentMethodTypes::fromRaw(const QString& raw)
{
    return findRaw<PaymentMethodType>(raw, all, &PaymentMethodTypes::raw).value_or(PaymentMethodType::cash);
}

QString PaymentMethodTypes::label(PaymentMethodType method)
{
    switch (method) {
    case PaymentMethodType::cash:
        return QStringLiteral("Cash");
    case PaymentMethodType::card:
        return QStringLiteral("Card");
    case PaymentMethodType::mobileMoney:
        return QStringLiteral("Mobile Money");
    case PaymentMethodType::other:
        return QStringLiteral("Other");
    case PaymentMethodType::onAccount:
        return QStringLiteral("On Account");
    }
    Q_UNREACHABLE();
}

QString SaleStatuses::raw(SaleStatus status)
{
    switch (status) {
    case SaleStatus::completed:
        return QStringLiteral("completed");
    case SaleStatus::partiallyRefunded:
        return QStringLiteral("partiallyRefunded");
    case SaleStatus::refunded:
        return QStringLiteral("refunded");
    case SaleStatus::voided:
        return QStringLiteral("voided");
    }
    Q_UNREACHABLE();
}

std::optional<SaleStatus> SaleStatuses::fromRaw(const QString& raw)
{
    return findRaw<SaleStatus>(raw, allSaleStatuses, &SaleStatuses::raw);
}

QString UserRoles::raw(UserRole role)
{
    switch (role) {
    case UserRole::admin:
        return QStringLiteral("admin");
    case UserRole::cashier:
        return QStringLiteral("cashier");
    }
    Q_UNREACHABLE();
}

std::optional<UserRole> UserRoles::fromRaw(const QString& raw)
{
    return findRaw<UserRole>(raw, allUserRoles, &UserRoles::raw);
}

QString UserRoles::label(UserRole role)
{
    switch (role) {
    case UserRole::admin:
        return QStringLiteral("Admin");
    case UserRole::cashier:
        return QStringLiteral("Cashier");
    }
    Q_UNREACHABLE();
}

QString InventoryMovementTypes::raw(InventoryMovementType type)
{
    switch (type) {
    case InventoryMovementType::stockIn:
        return QStringLiteral("stockIn");
    case InventoryMovementType::stockOut:
        return QStringLiteral("stockOut");
    case InventoryMovementType::adjustment:
        return QStringLiteral("adjustment");
    case InventoryMovementType::saleDeduction:
        return QStringLiteral("saleDeduction");
    case InventoryMovementType::returnRestock:
        return QStringLiteral("returnRestock");
    case InventoryMovementType::supplierDelivery:
        return QStringLiteral("supplierDelivery");
    case InventoryMovementType::voidRestock:
        return QStringLiteral("voidRestock");
    case InventoryMovementType::costChange:
        return QStringLiteral("costChange");
    }
    Q_UNREACHABLE();
}

InventoryMovementType InventoryMovementTypes::fromRaw(const QString& raw)
{
    return findRaw<InventoryMovementType>(raw, all, &InventoryMovementTypes::raw)
        .value_or(InventoryMovementType::adjustment);
}

QString InventoryMovementTypes::label(InventoryMovementType type)
{
    switch (type) {
    case InventoryMovementType::stockIn:
        return QStringLiteral("Stock In");
    case InventoryMovementType::stockOut:
        return QStringLiteral("Stock Out");
    case InventoryMovementType::adjustment:
        return QStringLiteral("Adjustment");
    case InventoryMovementType::saleDeduction:
        return QStringLiteral("Sale");
    case InventoryMovementType::returnRestock:
        return QStringLiteral("Return Restock");
    case InventoryMovementType::supplierDelivery:
        return QStringLiteral("Supplier Delivery");
    case InventoryMovementType::voidRestock:
        return QStringLiteral("Void Restock");
    case InventoryMovementType::costChange:
        return QStringLiteral("Cost Change");
    }
    Q_UNREACHABLE();
}

QString CashMovementTypes::raw(CashMovementType type)
{
    switch (type) {
    case CashMovementType::payIn:
        return QStringLiteral("payIn");
    case CashMovementType::payOut:
        return QStringLiteral("payOut");
    }
    Q_UNREACHABLE();
}

CashMovementType CashMovementTypes::fromRaw(const QString& raw)
{
    return findRaw<CashMovementType>(raw, all, &CashMovementTypes::raw).value_or(CashMovementType::payIn);
}

QString CashMovementTypes::label(CashMovementType type)
{
    switch (type) {
    case CashMovementType::payIn:
        return QStringLiteral("Paid In");
    case CashMovementType::payOut:
        return QStringLiteral("Paid Out");
    }
    Q_UNREACHABLE();
}

QString AppointmentStatuses::raw(AppointmentStatus status)
{
    switch (status) {
    case AppointmentStatus::booked:
        return QStringLiteral("booked");
    case AppointmentStatus::completed:
        return QStringLiteral("completed");
    case AppointmentStatus::cancelled:
        return QStringLiteral("cancelled");
    case AppointmentStatus::noShow:
        return QStringLiteral("noShow");
    }
    Q_UNREACHABLE();
}

AppointmentStatus AppointmentStatuses::fromRaw(const QString& raw)
{
    return findRaw<AppointmentStatus>(raw, all, &AppointmentStatuses::raw).value_or(AppointmentStatus::booked);
}

QString AppointmentStatuses::title(AppointmentStatus status)
{
    switch (status) {
    case AppointmentStatus::booked:
        return QStringLiteral("Booked");
    case AppointmentStatus::completed:
        return QStringLiteral("Completed");
    case AppointmentStatus::cancelled:
        return QStringLiteral("Cancelled");
    case AppointmentStatus::noShow:
        return QStringLiteral("No-Show");
    }
    Q_UNREACHABLE();
}
