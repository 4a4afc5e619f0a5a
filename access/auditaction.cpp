#include "access/auditaction.h"

#include "records/appsettings.h"

QString AuditActions::raw(AuditAction action)
{
    switch (action) {
    case AuditAction::discount:
        return QStringLiteral("discount");
    case AuditAction::priceChange:
        return QStringLiteral("priceChange");
    case AuditAction::refund:
        return QStringLiteral("refund");
    case AuditAction::voidSale:
        return QStringLiteral("void");
    case AuditAction::redeemPoints:
        return QStringLiteral("redeemPoints");
    case AuditAction::noSale:
        return QStringLiteral("noSale");
    case AuditAction::customerCredit:
        return QStringLiteral("customerCredit");
    case AuditAction::pointsAdjustment:
        return QStringLiteral("pointsAdjustment");
    case AuditAction::customerDeleted:
        return QStringLiteral("customerDeleted");
    case AuditAction::payOut:
        return QStringLiteral("payOut");
    }
    Q_UNREACHABLE();
}

std::optional<AuditAction> AuditActions::fromRaw(const QString& raw)
{
    for (AuditAction action : all) {
        if (AuditActions::raw(action) == raw)
            return action;
    }
    return std::nullopt;
}

QString AuditActions::title(const QString& raw)
{
    return title(fromRaw(raw).value_or(AuditAction::discount));
}

QString AuditActions::title(AuditAction action)
{
    switch (action) {
    case AuditAction::discount:
        return QStringLiteral("Discount over limit");
    case AuditAction::priceChange:
        return QStringLiteral("Price change");
    case AuditAction::refund:
        return QStringLiteral("Refund");
    case AuditAction::voidSale:
        return QStringLiteral("Void");
    case AuditAction::redeemPoints:
        return QStringLiteral("Points redeemed");
    case AuditAction::noSale:
        return QStringLiteral("No Sale (drawer opened)");
    case AuditAction::customerCredit:
        return QStringLiteral("Credit settings changed");
    case AuditAction::pointsAdjustment:
        return QStringLiteral("Points adjusted");
    case AuditAction::customerDeleted:
        return QStringLiteral("Customer deleted");
    case AuditAction::payOut:
        return QStringLiteral("Cash paid out");
    }
    Q_UNREACHABLE();
}

QString AuditActions::dialogTitle(AuditAction action)
{
    switch (action) {
    case AuditAction::discount:
        return QStringLiteral("Approve a discount over the limit");
    case AuditAction::priceChange:
        return QStringLiteral("Approve a price change");
    case AuditAction::refund:
        return QStringLiteral("Approve a refund");
    case AuditAction::voidSale:
        return QStringLiteral("Approve a void");
    case AuditAction::redeemPoints:
        return QStringLiteral("Approve redeeming points");
    case AuditAction::noSale:
        return QStringLiteral("Open the cash drawer (No Sale)");
    case AuditAction::customerCredit:
        return QStringLiteral("Approve a change of credit settings");
    case AuditAction::pointsAdjustment:
        return QStringLiteral("Approve a points adjustment");
    case AuditAction::customerDeleted:
        return QStringLiteral("Approve deleting a customer");
    case AuditAction::payOut:
        return QStringLiteral("Approve a cash pay-out");
    }
    Q_UNREACHABLE();
}

bool AuditActions::isSwitchedOn(AuditAction action, const AppSettings& settings)
{
    switch (action) {
    case AuditAction::discount:
        return settings.approveDiscounts();
    case AuditAction::priceChange:
        return settings.approvePriceChanges();
    case AuditAction::refund:
        return settings.approveRefunds();
    case AuditAction::voidSale:
        return settings.approveVoids();
    case AuditAction::redeemPoints:
        return settings.approveRedeemPoints();
    case AuditAction::noSale:
        return settings.approveNoSale();
    case AuditAction::customerCredit:
    case AuditAction::pointsAdjustment:
    case AuditAction::customerDeleted:
        return true;
    case AuditAction::payOut:
        return false;
    }
    Q_UNREACHABLE();
}
