#include "customers/customerdetailmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/tolerances.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "store/storeerror.h"

#include <cmath>

CustomerDetailModel::CustomerDetailModel(AccountsService& accounts, LoyaltyService& loyalty,
                                         ModelContext& context, SessionStore& session, Ref<Customer> customer,
                                         QObject* parent)
    : ViewModel(parent)
    , m_accounts(accounts)
    , m_loyalty(loyalty)
    , m_context(context)
    , m_session(session)
    , m_customer(std::move(customer))
{
    Q_ASSERT(m_customer);
    m_name = m_customer->name();
    m_phone = m_customer->phone();
    m_email = m_customer->email();
    m_address = m_customer->address();
    m_allowCredit = m_customer->allowCredit();
    m_creditLimitText = QString::number(m_customer->creditLimit(), 'f', 2);
    m_context.onChange(this,
                       {&Customer::schema(), &Sale::schema(), &Payment::schema(), &CustomerPayment::schema(),
                        &LoyaltyEntry::schema()},
                       [this] { Q_EMIT detailChanged(); });
}

QString CustomerDetailModel::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

double CustomerDetailModel::creditLimit() const
{
    bool ok = false;
    const double limit = m_creditLimitText.trimmed().toDouble(&ok);
    return ok && std::isfinite(limit) ? limit : 0.0;
}

bool CustomerDetailModel::hasUnsavedEdits() const
{
    return m_name != m_customer->name() || m_phone != m_customer->phone() || m_email != m_customer->email() ||
           m_address != m_customer->address() || m_allowCredit != m_customer->allowCredit() ||
           creditLimit() != m_customer->creditLimit();
}

bool CustomerDetailModel::save()
{
    m_customer->setName(m_name);
    m_customer->setPhone(m_phone);
    m_customer->setEmail(m_email);
    m_customer->setAddress(m_address);
    m_customer->setAllowCredit(m_allowCredit);
    m_customer->setCreditLimit(creditLimit());
    return saveOrUndo(m_context);
}

QString CustomerDetailModel::pointsBalanceText() const
{
    return QString::number(m_customer->loyaltyPoints());
}

QList<Ref<LoyaltyEntry>> CustomerDetailModel::pointsHistory()
{
    return reading(QList<Ref<LoyaltyEntry>>(), [this] { return m_loyalty.history(m_customer); });
}

double CustomerDetailModel::balanceOwed()
{
    return reading(0.0, [this] { return m_accounts.balance(m_customer); });
}

QString CustomerDetailModel::balanceOwedText()
{
    return money(balanceOwed());
}

QList<AccountEntry> CustomerDetailModel::accountHistory()
{
    return reading(QList<AccountEntry>(), [this] { return m_accounts.ledger(m_customer); });
}

QList<Ref<Sale>> CustomerDetailModel::purchases(int offset)
{
    return reading(QList<Ref<Sale>>(), [&] {
        return m_context.fetch<Sale>(FetchDescriptor(Sale::Col::customer == m_customer)
                                         .sortedBy(descending(Sale::Col::timestamp))
                                         .sortedBy(descending(Column{"rowid"}))
                                         .limitedTo(purchasePageSize, offset));
    });
}

AccountStatement CustomerDetailModel::statement(std::optional<QDate> from)
{
    return m_accounts.statement(m_customer, from);
}

QString CustomerDetailModel::statementSubtitle() const
{
    return QStringLiteral("Statement date: ") + Clock::now().date().toString(QStringLiteral("yyyy-MM-dd"));
}

QString CustomerDetailModel::statementFileName() const
{
    return QStringLiteral("Statement %1 %2")
        .arg(m_customer->name(), Clock::now().date().toString(QStringLiteral("yyyy-MM-dd")));
}

QStringList CustomerDetailModel::deleteWarnings()
{
    QStringList lines;
    const double owed = balanceOwed();
    if (owed > Tolerance::credit)
        lines << QStringLiteral(
                     "%1 still owes %2. Deleting removes the account — record their payment first if "
                     "you can.")
                     .arg(m_customer->name(), money(owed));
    const qint64 sales =
        reading(qint64(0), [this] { return m_context.count<Sale>(Sale::Col::customer == m_customer); });
    if (sales > 0)
        lines << QStringLiteral(
                     "%1 past sale(s) will keep their own record — they'll just no longer be linked to "
                     "this customer.")
                     .arg(sales);
    lines << QStringLiteral("This cannot be undone.");
    return lines;
}

bool CustomerDetailModel::deleteCustomer()
{
    return saveOrUndo(m_context, [this] { m_context.remove(m_customer); });
}
