#pragma once

#include "records/enums.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "selling/refundentry.h"
#include "viewmodel/viewmodel.h"

#include <QHash>
#include <QString>

#include <optional>

class AppEnvironment;
class SessionStore;

// The Refunds screen's state: the original sale found by its exact invoice number, how much of
// each line comes back, the method and the reason; and the refund itself, which checks all of that
// again and writes the refund with its audit row as one unit of work. It stands on the sales
// service and the approvals at once, so it lives beside its screen, above both.
class RefundViewModel : public ViewModel {
    Q_OBJECT

public:
    RefundViewModel(AppEnvironment& environment, SessionStore& session, QObject* parent = nullptr);

    QString receiptQuery() const { return m_receiptQuery; }
    void setReceiptQuery(const QString& text) { assign(m_receiptQuery, text); }
    QString reason() const { return m_reason; }
    void setReason(const QString& text) { assign(m_reason, text); }
    PaymentMethodType refundMethod() const { return m_refundMethod; }
    void setRefundMethod(PaymentMethodType method) { assign(m_refundMethod, method); }

    Ref<Sale> foundSale() const { return m_foundSale; }
    // The found sale's lines in their stored order; the screen shows those with something left.
    QList<Ref<SaleItem>> lines() const { return m_lines; }
    Ref<Sale> completedRefund() const { return m_completedRefund; }

    // Looks the trimmed query up as an exact, case-sensitive invoice number.
    void search();

    static double remaining(const SaleItem& item);
    double returnQuantity(const SaleItem& item) const;
    // Never more than what is left of the line.
    void setReturnQuantity(const SaleItem& item, double quantity);
    // Measured units take a typed quantity; counted ones, and any unit nobody knows, a stepper.
    static bool takesTypedQuantity(SellingUnit unit);
    // The typed field's text: blank is 0; a number above 0 (a whole one for counted units) is
    // taken to the thousandth; anything else is refused and keeps the value there was.
    void setReturnQuantityText(const SaleItem& item, const QString& text);

    // The lines with a quantity above 0, in stored order.
    QList<RefundEntry> selectedEntries() const;
    double refundAmount() const;
    bool canProcess() const { return refundAmount() > 0; }

    // Why the refund as it stands would be refused; nothing when it would go through.
    std::optional<QString> problem() const;
    // Puts the problem, if any, in errorMessage before anyone is asked to approve; true when none.
    bool checkRefund();
    // Whether the signed-in user needs an admin's PIN for it, and what the admin is shown.
    bool needsApproval() const;
    QString approvalSummary() const;

    // The whole refund: checks, then the refund and its audit row, saved together or not at all.
    // On success completedRefund holds it and the form starts again; otherwise errorMessage says
    // why and the form is kept as it was.
    bool processRefund(const Ref<User>& approvedBy);

Q_SIGNALS:
    void foundSaleChanged();
    void quantitiesChanged();
    void completedRefundChanged();

private:
    void showSale(const Ref<Sale>& sale);

    AppEnvironment& m_environment;
    SessionStore& m_session;
    QString m_receiptQuery;
    Ref<Sale> m_foundSale;
    QList<Ref<SaleItem>> m_lines;
    QHash<QUuid, double> m_returnQuantities; // by SaleItem id
    QString m_reason;
    PaymentMethodType m_refundMethod = PaymentMethodType::cash;
    Ref<Sale> m_completedRefund;
};
