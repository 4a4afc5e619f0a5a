#pragma once

#include "access/auditaction.h"
#include "records/appsettings.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <array>
#include <optional>

class ApprovalService;

// The "Approvals & Audit Log" settings: which actions ask a cashier for an admin's PIN, and the
// discount a cashier may give alone. Each change is written and saved at once, or undone whole when
// the store refuses it; a limit that isn't a number stays in its field and is never saved.
class ApprovalSettingsModel : public ViewModel {
    Q_OBJECT

public:
    struct Switch {
        AuditAction action;
        const char16_t* title;
    };
    // In the order of the form.
    static constexpr std::array<Switch, 6> switches{{
        {AuditAction::discount, u"Discounts Over the Limit"},
        {AuditAction::priceChange, u"Price Changes at the Till"},
        {AuditAction::refund, u"Refunds"},
        {AuditAction::voidSale, u"Voids"},
        {AuditAction::redeemPoints, u"Redeeming Loyalty Points"},
        {AuditAction::noSale, u"No Sale (Open Drawer)"},
    }};

    static QString heading() { return QStringLiteral("Approvals & Audit Log"); }
    static QString note()
    {
        return QStringLiteral("A cashier needs an admin's PIN for the actions switched on here. Admins never need "
                              "approval. Every one of these actions is recorded in the **Audit Log** either way.");
    }
    static QString noAdminPinWarning()
    {
        return QStringLiteral(
            "No admin has a PIN yet, so nobody can approve. Set one below in User Accounts with Set PIN….");
    }
    static QString discountLimitTitle() { return QStringLiteral("Discount Limit"); }
    static QString percentUnit() { return QStringLiteral("% of the sale"); }
    static QString percentProblem() { return QStringLiteral("Enter a percentage such as 12.5."); }
    static QString openAuditLogTitle() { return QStringLiteral("Open Audit Log"); }

    ApprovalSettingsModel(ModelContext& context, Ref<AppSettings> settings, ApprovalService& approvals,
                          QObject* parent = nullptr);

    const AppSettings& settings() const { return *m_settings; }
    bool isOn(AuditAction action) const;
    void setOn(AuditAction action, bool on);

    // " per sale" after the store's currency symbol.
    QString amountUnit() const;
    void setDiscountLimitIsPercent(bool percent);
    // "10" for a percent, "50.00" for an amount, as the field shows the saved limit.
    QString savedLimitText() const;
    QString discountLimitText() const { return m_limitText; }
    // Saved once it reads as a number; until then discountLimitProblem says why, in the words of
    // the unit chosen: a percentage or an amount.
    void setDiscountLimitText(const QString& text);
    std::optional<QString> discountLimitProblem() const;

    // While no active admin has a PIN, nobody can approve what the switches ask for.
    bool nobodyCanApprove();

Q_SIGNALS:
    // The settings or the admins' PINs changed: the section shows them anew.
    void changed();

private:
    template <class Change> void change(Change apply);
    // The limit as typed, read in the unit chosen: "12.5" or "12.5%" for a percentage.
    std::optional<double> typedLimit(QString* problem = nullptr) const;

    ModelContext& m_context;
    Ref<AppSettings> m_settings;
    ApprovalService& m_approvals;
    QString m_limitText;
};
