#pragma once

#include "records/recordsfwd.h"

#include <QString>

#include <array>
#include <optional>

// What the audit log records. The six actions of the till come first, in the order of the log's
// filter; the rest guard a customer's account and the till's cash.
enum class AuditAction {
    discount,
    priceChange,
    refund,
    voidSale,
    redeemPoints,
    noSale,
    customerCredit,
    pointsAdjustment,
    customerDeleted,
    payOut,
    openingBalance
};

struct AuditActions {
    static constexpr std::array<AuditAction, 11> all{
        AuditAction::discount,       AuditAction::priceChange,      AuditAction::refund,
        AuditAction::voidSale,       AuditAction::redeemPoints,     AuditAction::noSale,
        AuditAction::customerCredit, AuditAction::pointsAdjustment, AuditAction::customerDeleted,
        AuditAction::payOut,         AuditAction::openingBalance};

    static QString raw(AuditAction action);
    static std::optional<AuditAction> fromRaw(const QString& raw);
    // Unknown text shows as a discount, the first action.
    static QString title(const QString& raw);
    static QString title(AuditAction action);
    static QString dialogTitle(AuditAction action);
    // The setting that asks a cashier for an admin's PIN, off while no settings are loaded; the
    // account actions always ask, settings or not.
    static bool isSwitchedOn(AuditAction action, const AppSettings* settings);
};
