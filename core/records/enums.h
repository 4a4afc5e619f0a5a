#pragma once

#include <QString>

#include <array>
#include <optional>

// The kinds of things that records store as raw text. The raw texts are persisted in every store and
// backup, so they never change. fromRaw reads a stored text; parse reads loosely typed text from an
// imported file.

enum class ProductType { inventory, nonInventory, service };

struct ProductTypes {
    static QString raw(ProductType type);
    // Unknown text reads as inventory, so an old or hand-made store still loads.
    static ProductType fromRaw(const QString& raw);
    static QString label(ProductType type);
    static std::optional<ProductType> parse(const QString& text);
};

enum class SellingUnit { each, kg, g, litre, ml, metre, hour };

struct SellingUnits {
    // The order of the unit picker.
    static constexpr std::array<SellingUnit, 7> all{SellingUnit::each,  SellingUnit::kg, SellingUnit::g,
                                                    SellingUnit::litre, SellingUnit::ml, SellingUnit::metre,
                                                    SellingUnit::hour};

    static QString raw(SellingUnit unit);
    // Unknown text reads as each.
    static SellingUnit fromRaw(const QString& raw);
    // Empty for each, which is counted rather than measured.
    static QString symbol(SellingUnit unit);
    static QString label(SellingUnit unit);
    static bool allowsFractions(SellingUnit unit);
    static std::optional<SellingUnit> parse(const QString& text);
    // Shown beside the unit choice.
    static QString fractionHint();
};

enum class PaymentMethodType { cash, card, mobileMoney, other, onAccount };

struct PaymentMethodTypes {
    // Also the order of the tender buttons.
    static constexpr std::array<PaymentMethodType, 5> all{
        PaymentMethodType::cash, PaymentMethodType::card, PaymentMethodType::mobileMoney,
        PaymentMethodType::other, PaymentMethodType::onAccount};

    static QString raw(PaymentMethodType method);
    // Unknown text reads as cash.
    static PaymentMethodType fromRaw(const QString& raw);
    static QString label(PaymentMethodType method);
};

enum class SaleStatus { completed, partiallyRefunded, refunded, voided };

struct SaleStatuses {
    static QString raw(SaleStatus status);
    // No fall-back: callers decide what an unknown status means for them.
    static std::optional<SaleStatus> fromRaw(const QString& raw);
};

enum class UserRole { admin, cashier };

struct UserRoles {
    static QString raw(UserRole role);
    // No fall-back: an unknown role must never read as admin.
    static std::optional<UserRole> fromRaw(const QString& raw);
    static QString label(UserRole role);
};

enum class InventoryMovementType {
    stockIn,
    stockOut,
    adjustment,
    saleDeduction,
    returnRestock,
    supplierDelivery,
    voidRestock,
    costChange
};

struct InventoryMovementTypes {
    static constexpr std::array<InventoryMovementType, 8> all{
        InventoryMovementType::stockIn,       InventoryMovementType::stockOut,
        InventoryMovementType::adjustment,    InventoryMovementType::saleDeduction,
        InventoryMovementType::returnRestock, InventoryMovementType::supplierDelivery,
        InventoryMovementType::voidRestock,   InventoryMovementType::costChange};

    static QString raw(InventoryMovementType type);
    // Unknown text reads as adjustment: a row of unknown kind still shows its quantity.
    static InventoryMovementType fromRaw(const QString& raw);
    // The name in the movement history.
    static QString label(InventoryMovementType type);
};

enum class CashMovementType { payIn, payOut };

struct CashMovementTypes {
    static constexpr std::array<CashMovementType, 2> all{CashMovementType::payIn, CashMovementType::payOut};

    static QString raw(CashMovementType type);
    // Unknown text reads as payIn: only a row that says so takes cash out of the drawer.
    static CashMovementType fromRaw(const QString& raw);
    static QString label(CashMovementType type);
};

enum class AppointmentStatus { booked, completed, cancelled, noShow };

struct AppointmentStatuses {
    static constexpr std::array<AppointmentStatus, 4> all{AppointmentStatus::booked, AppointmentStatus::completed,
                                                          AppointmentStatus::cancelled, AppointmentStatus::noShow};

    static QString raw(AppointmentStatus status);
    // Unknown text reads as booked: a booking nobody can read still holds its time.
    static AppointmentStatus fromRaw(const QString& raw);
    static QString title(AppointmentStatus status);
};
