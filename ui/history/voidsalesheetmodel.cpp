#include "ui/history/voidsalesheetmodel.h"

#include "environment/appenvironment.h"
#include "money/currency.h"
#include "money/rounding.h"
#include "records/customer.h"
#include "records/payment.h"
#include "startup/sessionstore.h"

#include <algorithm>

VoidSaleSheetModel::VoidSaleSheetModel(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session,
                                       std::function<void()> onDone, QObject* parent)
    : ViewModel(parent)
    , m_sale(std::move(sale))
    , m_environment(environment)
    , m_session(session)
    , m_onDone(std::move(onDone))
{
    Q_ASSERT(m_sale);
    for (const Ref<Payment>& payment : m_sale->payments()) {
        if (payment->method() == PaymentMethodType::cash)
            m_cashPaid += payment->amount();
        else if (payment->method() == PaymentMethodType::onAccount)
            m_onAccount += payment->amount();
    }
    m_cashPaid = Rounding::toCents(m_cashPaid);
    m_onAccount = Rounding::toCents(m_onAccount);
}

QString VoidSaleSheetModel::title() const
{
    return QStringLiteral("Void %1?").arg(m_sale->invoiceNumber());
}

QString VoidSaleSheetModel::reasonHint()
{
    return QStringLiteral("Reason (required) — e.g. rung up twice, wrong items");
}

QString VoidSaleSheetModel::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

QStringList VoidSaleSheetModel::notes() const
{
    QStringList notes{QStringLiteral("Items that are counted in stock go back into stock.")};
    if (m_cashPaid > 0)
        notes << QStringLiteral("Give the customer back %1 cash — it comes out of the till's Expected Cash.")
                     .arg(money(m_cashPaid));
    if (const Ref<Customer> customer = m_sale->customer(); customer && m_onAccount > 0)
        notes
            << QStringLiteral("%1 comes off %2's account balance.").arg(money(m_onAccount), customer->name());
    const QList<Ref<Payment>> payments = m_sale->payments();
    if (std::any_of(payments.begin(), payments.end(), [](const Ref<Payment>& payment) {
            const PaymentMethodType method = payment->method();
            return method == PaymentMethodType::card || method == PaymentMethodType::mobileMoney ||
                   method == PaymentMethodType::other;
        }))
        notes << QStringLiteral(
            "Card and mobile money payments must be reversed on the terminal or phone as usual.");
    if (m_sale->pointsEarned() >= 1 || m_sale->pointsRedeemed() >= 1)
        notes << QStringLiteral("Loyalty points earned are taken back and points spent are given back.");
    notes << QStringLiteral(
        "The sale stays in Sales History, marked Voided, and is left out of every report and total.");
    return notes;
}

bool VoidSaleSheetModel::needsApproval() const
{
    return ApprovalService::needsApproval(AuditAction::voidSale, m_session.currentUser().get(),
                                          m_session.settings().get());
}

QString VoidSaleSheetModel::approvalSummary() const
{
    return QStringLiteral("Void %1 (%2). Reason: %3")
        .arg(m_sale->invoiceNumber(), Currency::format(m_sale->total(), Currency::fixedSign), m_reason);
}

bool VoidSaleSheetModel::performVoid(const Ref<User>& approvedBy)
{
    const Ref<AppSettings> settings = m_session.settings();
    // With no settings loaded nobody but an admin, or a cashier with an admin's approval, voids.
    const bool cashiersMayVoid = settings && !settings->approveVoids();
    const Ref<User> user = m_session.currentUser();
    // The void and its row in the log are saved together, so the log never misses a void.
    const bool voided = saveOrUndo(m_environment.modelContext(), [&] {
        m_environment.salesService().voidSale(m_sale, m_reason, user, approvedBy, cashiersMayVoid,
                                              m_session.currentTillShift());
        m_environment.approvalService().record(AuditAction::voidSale, user.get(),
                                               approvedBy ? approvedBy->name() : QString(), m_sale->total(),
                                               m_sale->invoiceNumber(), m_reason, QString());
    });
    if (!voided)
        return false;
    // The cash goes back to the customer, so the drawer opens even where cash sales don't open it.
    // The void stands whatever the drawer does, and nobody is told of a drawer that stuck.
    if (m_cashPaid > 0 && settings && settings->cashDrawerEnabled()) {
        try {
            m_environment.cashDrawer().openDrawer();
        } catch (const Refusal&) {
        }
    }
    if (m_onDone)
        m_onDone();
    return true;
}
