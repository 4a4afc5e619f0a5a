#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

// The sections of the main window; the order is the sidebar's.
enum class AppSection {
    dashboard,
    pos,
    appointments,
    products,
    inventory,
    purchaseOrders,
    suppliers,
    customers,
    staff,
    salesHistory,
    refunds,
    till,
    reports,
    auditLog,
    settings
};

struct AppSections {
    static constexpr std::array<AppSection, 15> all{
        AppSection::dashboard,    AppSection::pos,       AppSection::appointments,
        AppSection::products,     AppSection::inventory, AppSection::purchaseOrders,
        AppSection::suppliers,    AppSection::customers, AppSection::staff,
        AppSection::salesHistory, AppSection::refunds,   AppSection::till,
        AppSection::reports,      AppSection::auditLog,  AppSection::settings};

    static QString title(AppSection section);
    static bool isAdminOnly(AppSection section);

    // Every section for an admin; a cashier loses the admin-only ones.
    static QList<AppSection> sections(UserRole role);
    // What the signed-in user may open. A role text nobody knows counts as cashier, and the
    // appointment book needs settings that switch it on.
    static QList<AppSection> available(const QString& roleRaw, const AppSettings* settings);

    // Where a user lands when the wanted section is off limits or gone: the till's workspace,
    // else the first section offered, else nowhere.
    static std::optional<AppSection> landing(const QList<AppSection>& offered);
    // What the selection becomes when `wanted` is asked for: a non-admin never stays on an
    // admin-only section, and nobody on one that isn't offered.
    static std::optional<AppSection> allowedSelection(std::optional<AppSection> wanted, bool isAdmin,
                                                      const QList<AppSection>& offered);
};
