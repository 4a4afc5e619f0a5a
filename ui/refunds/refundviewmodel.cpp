#include "ui/refunds/refundviewmodel.h"

#include "customers/accounterror.h"
#include "environment/appenvironment.h"
#include "money/currency.h"
#include "money/rounding.h"
#include "startup/sessionstore.h"

#include <cmath>

RefundViewModel::RefundViewModel(AppEnvironment& environment, SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_environment(environment)
    , m_session(session)
{
}

void RefundViewModel::showSale(const Ref<Sale>& sale)
{
    m_foundSale = sale;
    m_lines = sale ? sale->items() : QList<Ref<SaleItem>>();
    m_returnQuantities.clear();
    Q_EMIT foundSaleChanged();
    Q_EMIT quantitiesChanged();
}

void RefundViewModel::search()
{
    setErrorMessage(std::nullopt);
    showSale(nullptr);
    const QString query = m_receiptQuery.trimmed();
    if (query.isEmpty())
        return;
    const Ref<Sale> sale = reading(Ref<Sale>(), [&] {
        return m_environment.modelContext().fetchFirst<Sale>(
            FetchDescriptor(Sale::Col::invoiceNumber == query));
    });
    if (errorMessage())
        return;
    // A refund's own number finds nothing: a refund is never refunded again.
    if (!sale || sale->isRefund())
        setErrorMessage(QStringLiteral("No original sale found for receipt \"%1\".").arg(query));
    else if (sale->isVoided())
        setErrorMessage(QStringLiteral("Receipt %1 was voided, so there's nothing to refund.").arg(query));
    else
        showSale(sale);
}

double RefundViewModel::remaining(const SaleItem& item)
{
    return std::max(item.quantity() - item.returnedQuantity(), 0.0);
}

double RefundViewModel::returnQuantity(const SaleItem& item) const
{
    return m_returnQuantities.value(item.id(), 0);
}

void RefundViewModel::setReturnQuantity(const SaleItem& item, double quantity)
{
    const double capped = std::min(quantity, remaining(item));
    if (m_returnQuantities.value(item.id(), 0) == capped)
        return;
    m_returnQuantities.insert(item.id(), capped);
    Q_EMIT quantitiesChanged();
}

bool RefundViewModel::takesTypedQuantity(SellingUnit unit)
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
    return false;
}

void RefundViewModel::setReturnQuantityText(const SaleItem& item, const QString& text)
{
    QString typed = text.trimmed();
    if (typed.isEmpty()) {
        setReturnQuantity(item, 0);
        return;
    }
    bool ok = false;
    const double value = typed.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
    if (!ok || !std::isfinite(value) || value <= 0)
        return;
    const double rounded = Rounding::toThousandths(value);
    if (!SellingUnits::allowsFractions(SellingUnits::fromRaw(item.sellingUnitRaw())) &&
        rounded != std::floor(rounded))
        return;
    setReturnQuantity(item, rounded);
}

QList<RefundEntry> RefundViewModel::selectedEntries() const
{
    QList<RefundEntry> entries;
    for (const Ref<SaleItem>& item : m_lines) {
        const double quantity = returnQuantity(*item);
        if (quantity > 0)
            entries.append({item, quantity});
    }
    return entries;
}

double RefundViewModel::refundAmount() const
{
    return SalesService::refundAmount(selectedEntries());
}

std::optional<QString> RefundViewModel::problem() const
{
    Q_ASSERT(m_foundSale);
    const QList<RefundEntry> entries = selectedEntries();
    if (entries.isEmpty())
        return SalesError::nothingSelectedToReturn().description();
    if (m_foundSale->isVoided())
        return SalesError::saleWasVoided().description();
    // No credit limit applies: a refund only lowers what the customer owes.
    if (m_refundMethod == PaymentMethodType::onAccount && !m_foundSale->customer())
        return AccountError::needsCustomer().description();
    for (const RefundEntry& entry : entries) {
        const double left = Rounding::toThousandths(entry.item->quantity() - entry.item->returnedQuantity());
        if (left < Rounding::toThousandths(entry.quantity))
            return SalesError::returnExceedsPurchased(entry.item->productNameSnapshot(), left).description();
    }
    return std::nullopt;
}

bool RefundViewModel::checkRefund()
{
    const std::optional<QString> refused = problem();
    setErrorMessage(refused);
    return !refused;
}

bool RefundViewModel::needsApproval() const
{
    return m_foundSale && ApprovalService::needsApproval(AuditAction::refund, m_session.currentUser().get(),
                                                         m_session.settings().get());
}

QString RefundViewModel::approvalSummary() const
{
    return QStringLiteral("Refund %1 on %2 (%3).")
        .arg(Currency::format(refundAmount(), Currency::fixedSign),
             m_foundSale ? m_foundSale->invoiceNumber() : QString(),
             PaymentMethodTypes::label(m_refundMethod));
}

bool RefundViewModel::processRefund(const Ref<User>& approvedBy)
{
    const Ref<AppSettings> settings = m_session.settings();
    if (!m_foundSale || !settings || !checkRefund())
        return false;
    const QList<RefundEntry> entries = selectedEntries();
    const QString reason = m_reason.isEmpty() ? QStringLiteral("Not specified") : m_reason;
    const Ref<User> cashier = m_session.currentUser();
    Ref<Sale> refund;
    // The refund and its row in the log are saved together: there is no refund the log doesn't
    // know of, and a retry after a failure writes it once.
    const bool written = saveOrUndo(m_environment.modelContext(), [&] {
        refund = m_environment.salesService().writeRefund(
            m_foundSale, entries, reason, cashier, m_session.currentTillShift(), m_refundMethod, *settings);
        m_environment.approvalService().record(
            AuditAction::refund, cashier.get(), approvedBy ? approvedBy->name() : QString(),
            std::abs(refund->total()),
            QStringLiteral("%1 (refund of %2)").arg(refund->invoiceNumber(), m_foundSale->invoiceNumber()),
            reason,
            QStringLiteral("%1 line(s), %2")
                .arg(entries.size())
                .arg(PaymentMethodTypes::label(m_refundMethod)));
    });
    if (!written)
        return false;
    m_completedRefund = refund;
    m_receiptQuery.clear();
    m_reason.clear();
    showSale(nullptr);
    Q_EMIT fieldsChanged();
    Q_EMIT completedRefundChanged();
    return true;
}
