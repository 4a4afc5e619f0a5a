#include "access/auditaction.h"

#include "records/appsettings.h"

namespace {

enum class Asks { bySetting, always, never };

struct ActionRow {
    const char16_t* raw;
    const char16_t* title;
    const char16_t* dialogTitle;
    Asks asks;
    bool (AppSettings::*setting)() const = nullptr;
};

// In the order of AuditAction.
constexpr std::array<ActionRow, AuditActions::all.size()> rows{{
    {u"discount", u"Discount over limit", u"Approve a discount over the limit", Asks::bySetting,
     &AppSettings::approveDiscounts},
    {u"priceChange", u"Price change", u"Approve a price change", Asks::bySetting, &AppSettings::approvePriceChanges},
    {u"refund", u"Refund", u"Approve a refund", Asks::bySetting, &AppSettings::approveRefunds},
    {u"void", u"Void", u"Approve a void", Asks::bySetting, &AppSettings::approveVoids},
    {u"redeemPoints", u"Points redeemed", u"Approve redeeming points", Asks::bySetting,
     &AppSettings::approveRedeemPoints},
    {u"noSale", u"No Sale (drawer opened)", u"Open the cash drawer (No Sale)", Asks::bySetting,
     &AppSettings::approveNoSale},
    {u"customerCredit", u"Credit settings changed", u"Approve a change of credit settings", Asks::always},
    {u"pointsAdjustment", u"Points adjusted", u"Approve a points adjustment", Asks::always},
    {u"customerDeleted", u"Customer deleted", u"Approve deleting a customer", Asks::always},
    // Refused when it is more than the drawer holds, and logged, but never asks.
    {u"payOut", u"Cash paid out", u"Approve a cash pay-out", Asks::never},
    {u"openingBalance", u"Opening balance entered", u"Approve an opening balance", Asks::always},
}};
static_assert(size_t(AuditAction::openingBalance) + 1 == rows.size());

const ActionRow& row(AuditAction action)
{
    return rows[size_t(action)];
}

} // namespace

QString AuditActions::raw(AuditAction action)
{
    return QString::fromUtf16(row(action).raw);
}

std::optional<AuditAction> AuditActions::fromRaw(const QString& raw)
{
    for (AuditAction action : all) {
        if (raw == QStringView(row(action).raw))
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
    return QString::fromUtf16(row(action).title);
}

QString AuditActions::dialogTitle(AuditAction action)
{
    return QString::fromUtf16(row(action).dialogTitle);
}

bool AuditActions::isSwitchedOn(AuditAction action, const AppSettings* settings)
{
    const ActionRow& entry = row(action);
    switch (entry.asks) {
    case Asks::bySetting:
        return settings && (settings->*entry.setting)();
    case Asks::always:
        return true;
    case Asks::never:
        return false;
    }
    Q_UNREACHABLE();
}
