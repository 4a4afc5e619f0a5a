#include "ui/navigation/appsection.h"

#include "records/appsettings.h"

QString AppSections::title(AppSection section)
{
    switch (section) {
    case AppSection::dashboard:
        return QStringLiteral("Dashboard");
    case AppSection::pos:
        return QStringLiteral("POS Workspace");
    case AppSection::appointments:
        return QStringLiteral("Appointments");
    case AppSection::products:
        return QStringLiteral("Products");
    case AppSection::inventory:
        return QStringLiteral("Inventory");
    case AppSection::purchaseOrders:
        return QStringLiteral("Purchase Orders");
    case AppSection::suppliers:
        return QStringLiteral("Suppliers");
    case AppSection::customers:
        return QStringLiteral("Customers");
    case AppSection::staff:
        return QStringLiteral("Staff");
    case AppSection::salesHistory:
        return QStringLiteral("Sales History");
    case AppSection::refunds:
        return QStringLiteral("Refunds");
    case AppSection::till:
        return QStringLiteral("Till & Shifts");
    case AppSection::reports:
        return QStringLiteral("Reports");
    case AppSection::auditLog:
        return QStringLiteral("Audit Log");
    case AppSection::settings:
        return QStringLiteral("Settings");
    }
    Q_UNREACHABLE();
}

bool AppSections::isAdminOnly(AppSection section)
{
    switch (section) {
    case AppSection::dashboard:
    case AppSection::products:
    case AppSection::inventory:
    case AppSection::purchaseOrders:
    case AppSection::suppliers:
    case AppSection::staff:
    case AppSection::reports:
    case AppSection::auditLog:
    case AppSection::settings:
        return true;
    case AppSection::pos:
    case AppSection::appointments:
    case AppSection::customers:
    case AppSection::salesHistory:
    case AppSection::refunds:
    case AppSection::till:
        return false;
    }
    Q_UNREACHABLE();
}

QList<AppSection> AppSections::sections(UserRole role)
{
    QList<AppSection> result;
    for (AppSection section : all) {
        if (role == UserRole::admin || !isAdminOnly(section))
            result.append(section);
    }
    return result;
}

QList<AppSection> AppSections::available(const QString& roleRaw, const AppSettings* settings)
{
    QList<AppSection> result = sections(UserRoles::fromRaw(roleRaw).value_or(UserRole::cashier));
    if (!settings || !settings->appointmentsEnabled())
        result.removeAll(AppSection::appointments);
    return result;
}

std::optional<AppSection> AppSections::landing(const QList<AppSection>& offered)
{
    if (offered.contains(AppSection::pos))
        return AppSection::pos;
    if (offered.isEmpty())
        return std::nullopt;
    return offered.first();
}

std::optional<AppSection> AppSections::allowedSelection(std::optional<AppSection> wanted, bool isAdmin,
                                                        const QList<AppSection>& offered)
{
    if (!wanted)
        return std::nullopt;
    if ((isAdminOnly(*wanted) && !isAdmin) || !offered.contains(*wanted))
        return landing(offered);
    return wanted;
}
