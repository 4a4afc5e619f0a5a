#include "customers/customerdetailmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "money/tolerances.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

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
    readFields();
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

std::optional<double> CustomerDetailModel::creditLimit() const
{
    return NumberEntry::money(m_creditLimitText).value;
}

std::optional<QString> CustomerDetailModel::creditLimitProblem() const
{
    const NumberEntry entry = NumberEntry::money(m_creditLimitText);
    return entry.isValid() ? std::nullopt : std::optional(entry.problem);
}

bool CustomerDetailModel::hasUnsavedEdits() const
{
    return m_name != m_customer->name() || m_phone != m_customer->phone() || m_email != m_customer->email() ||
           m_address != m_customer->address() || m_allowCredit != m_customer->allowCredit() ||
           creditLimit() != m_customer->creditLimit();
}

void CustomerDetailModel::writeFields(Customer& customer) const
{
    customer.setName(m_name);
    customer.setPhone(m_phone);
    customer.setEmail(m_email);
    customer.setAddress(m_address);
    customer.setAllowCredit(m_allowCredit);
    customer.setCreditLimit(*creditLimit());
}

bool CustomerDetailModel::save()
{
    if (!creditLimit())
        return false;
    try {
        m_customer = performUnitOfWork(m_context, [&] {
            if (!isNew()) {
                writeFields(*m_customer);
                return m_customer;
            }
            // A copy goes in, so that a failed save leaves the new customer as it was before.
            const Ref<Customer> inserted = m_customer->draft<Customer>();
            writeFields(*inserted);
            inserted->setCreatedAt(Clock::now());
            m_context.insert(inserted);
            return inserted;
        });
    } catch (const Refusal& refusal) {
        tellWriteFailure(refusal.description());
        return false;
    }
    tellWriteFailure(std::nullopt);
    // The texts now match what was saved: "500" is shown as "500.00".
    readFields();
    Q_EMIT fieldsChanged();
    return true;
}

void CustomerDetailModel::discardEdits()
{
    readFields();
    Q_EMIT fieldsChanged();
}

void CustomerDetailModel::readFields()
{
    m_name = m_customer->name();
    m_phone = m_customer->phone();
    m_email = m_customer->email();
    m_address = m_customer->address();
    m_allowCredit = m_customer->allowCredit();
    m_creditLimitText = QString::number(m_customer->creditLimit(), 'f', NumberEntry::centPlaces);
}

QString CustomerDetailModel::pointsBalanceText() const
{
    return QString::number(m_customer->loyaltyPoints());
}

QList<Ref<LoyaltyEntry>> CustomerDetailModel::pointsHistory()
{
    return readOrTell(QList<Ref<LoyaltyEntry>>(), [this] { return m_loyalty.history(m_customer); });
}

double CustomerDetailModel::balanceOwed()
{
    return readOrTell(0.0, [this] { return m_accounts.balance(m_customer); });
}

QString CustomerDetailModel::balanceOwedText()
{
    return money(balanceOwed());
}

QList<AccountEntry> CustomerDetailModel::accountHistory()
{
    return readOrTell(QList<AccountEntry>(), [this] { return m_accounts.ledger(m_customer); });
}

QList<Ref<Sale>> CustomerDetailModel::purchases(int offset)
{
    return readOrTell(QList<Ref<Sale>>(), [&] {
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
        readOrTell(qint64(0), [this] { return m_context.count<Sale>(Sale::Col::customer == m_customer); });
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
    if (!isNew()) {
        try {
            performUnitOfWork(m_context, [this] { m_context.remove(m_customer); });
        } catch (const Refusal& refusal) {
            tellWriteFailure(refusal.description());
            return false;
        }
    }
    tellWriteFailure(std::nullopt);
    return true;
}
