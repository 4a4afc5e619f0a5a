#include "customers/receiveaccountpaymentmodel.h"

#include "money/currency.h"
#include "money/numberentry.h"

ReceiveAccountPaymentModel::ReceiveAccountPaymentModel(AccountsService& accounts, SessionStore& session,
                                                       Ref<Customer> customer, double owed,
                                                       std::function<void()> onDone, QObject* parent)
    : ViewModel(parent)
    , m_accounts(accounts)
    , m_session(session)
    , m_customer(std::move(customer))
    , m_owed(owed)
    , m_onDone(std::move(onDone))
{
    Q_ASSERT(m_customer);
}

void ReceiveAccountPaymentModel::setMethod(PaymentMethodType method)
{
    Q_ASSERT(method != PaymentMethodType::onAccount);
    assign(m_method, method);
}

QString ReceiveAccountPaymentModel::owesLine() const
{
    const Ref<AppSettings> settings = m_session.settings();
    const QString symbol = settings ? settings->currencySymbol() : Currency::fixedSign;
    return QStringLiteral("%1 owes %2.").arg(m_customer->name(), Currency::format(m_owed, symbol));
}

void ReceiveAccountPaymentModel::fillFullBalance()
{
    setAmountText(QString::asprintf("%.2f", m_owed));
}

std::optional<QString> ReceiveAccountPaymentModel::tillNote() const
{
    if (m_method != PaymentMethodType::cash)
        return std::nullopt;
    if (m_session.currentTillShift())
        return QStringLiteral("The cash goes into the open till and is included in Expected Cash.");
    return QStringLiteral("No till is open, so this cash won't be counted in a till shift.");
}

bool ReceiveAccountPaymentModel::record()
{
    // Nothing typed is no amount, which the service refuses in its own words.
    const NumberEntry amount =
        m_amountText.trimmed().isEmpty() ? NumberEntry{0.0, {}} : NumberEntry::money(m_amountText);
    if (!amount.isValid()) {
        setErrorMessage(amount.problem);
        return false;
    }
    const Ref<TillShift> shift = m_method == PaymentMethodType::cash ? m_session.currentTillShift() : nullptr;
    if (!writing([&] {
            m_accounts.receivePayment(m_customer, *amount.value, m_method, m_reference, QString(),
                                      m_session.currentUser(), shift);
        }))
        return false;
    if (m_onDone)
        m_onDone();
    return true;
}
