#include "customers/receiveaccountpaymentmodel.h"

#include "customers/accounterror.h"
#include "money/currency.h"

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
    // Typed on phones and foreign keyboards alike: "12,50" means 12.50 here.
    bool ok = false;
    double amount = QString(m_amountText).trimmed().replace(u',', u'.').toDouble(&ok);
    if (!ok)
        amount = 0;
    const Ref<TillShift> shift = m_method == PaymentMethodType::cash ? m_session.currentTillShift() : nullptr;
    if (!acting<AccountError>([&] {
            m_accounts.receivePayment(m_customer, amount, m_method, m_reference, QString(),
                                      m_session.currentUser(), shift);
        }))
        return false;
    if (m_onDone)
        m_onDone();
    return true;
}
