#pragma once

#include "customers/accountsservice.h"
#include "records/customer.h"
#include "records/enums.h"
#include "startup/sessionstore.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <array>
#include <functional>
#include <optional>

// The "Receive Payment" sheet for a customer's account. Cash goes to the open till of the session,
// so that Expected Cash includes it; other methods never touch a till.
class ReceiveAccountPaymentModel : public ViewModel {
    Q_OBJECT

public:
    // The "Paid By" choice: every tender but On Account.
    static constexpr std::array<PaymentMethodType, 4> methods{
        PaymentMethodType::cash, PaymentMethodType::card, PaymentMethodType::mobileMoney,
        PaymentMethodType::other};

    static QString title() { return QStringLiteral("Receive Payment"); }
    static QString amountTitle() { return QStringLiteral("Amount"); }
    static QString amountHint() { return QStringLiteral("0.00"); }
    static QString fullBalanceTitle() { return QStringLiteral("Full balance"); }
    static QString methodTitle() { return QStringLiteral("Paid By"); }
    static QString referenceTitle()
    {
        return QStringLiteral("Reference (optional) — e.g. MoMo transaction ID");
    }
    static QString recordTitle() { return QStringLiteral("Record Payment"); }

    ReceiveAccountPaymentModel(AccountsService& accounts, SessionStore& session, Ref<Customer> customer,
                               double owed, std::function<void()> onDone, QObject* parent = nullptr);

    Ref<Customer> customer() const { return m_customer; }
    double owed() const { return m_owed; }
    QString amountText() const { return m_amountText; }
    void setAmountText(const QString& text) { assign(m_amountText, text); }
    PaymentMethodType method() const { return m_method; }
    void setMethod(PaymentMethodType method);
    QString reference() const { return m_reference; }
    void setReference(const QString& text) { assign(m_reference, text); }

    // "{name} owes {owed}."
    QString owesLine() const;
    // Writes the balance into the amount, as "%.2f".
    void fillFullBalance();
    // Where the cash goes; absent for the other methods.
    std::optional<QString> tillNote() const;

    // On success calls onDone and returns true; otherwise errorMessage says why.
    bool record();

Q_SIGNALS:

private:
    AccountsService& m_accounts;
    SessionStore& m_session;
    Ref<Customer> m_customer;
    double m_owed;
    std::function<void()> m_onDone;
    QString m_amountText;
    PaymentMethodType m_method = PaymentMethodType::cash;
    QString m_reference;
};
