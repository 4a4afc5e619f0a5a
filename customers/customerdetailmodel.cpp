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
    // A new one's form edits a copy, so that the customer handed in keeps its name until saved.
    , m_form(m_customer->context() ? FormDraft<Customer>::of(m_customer)
                                   : FormDraft<Customer>::ofNew(m_customer->draft<Customer>(), context))
{
    readCreditLimit();
    m_context.onChange(this,
                       {&Customer::schema(), &Sale::schema(), &Payment::schema(), &CustomerPayment::schema(),
                        &LoyaltyEntry::schema(), &AccountOpeningBalance::schema()},
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

void CustomerDetailModel::setCreditLimitText(const QString& text)
{
    if (!replace(m_creditLimitText, text))
        return;
    if (const std::optional<double> limit = creditLimit())
        m_form.edits()->setCreditLimit(*limit);
    Q_EMIT fieldsChanged();
}

QString CustomerDetailModel::CreditChange::details() const
{
    const auto onOff = [](bool on) { return on ? QStringLiteral("on") : QStringLiteral("off"); };
    const auto fixed = [](double amount) { return Currency::format(amount, Currency::fixedSign); };
    QStringList parts;
    if (allowAfter != allowBefore)
        parts << QStringLiteral("Allow credit %1 → %2").arg(onOff(allowBefore), onOff(allowAfter));
    if (limitAfter != limitBefore)
        parts << QStringLiteral("credit limit %1 → %2").arg(fixed(limitBefore), fixed(limitAfter));
    QString text = parts.join(QStringLiteral("; "));
    text[0] = text[0].toUpper();
    return text;
}

std::optional<CustomerDetailModel::CreditChange> CustomerDetailModel::creditChange() const
{
    if (creditLimitProblem())
        return std::nullopt;
    // The record handed in still holds what a new customer starts with.
    const Customer& before = *m_customer;
    const Customer& after = *m_form.edits();
    // Exactly what Save would write: the limit typed is already in cents.
    if (after.allowCredit() == before.allowCredit() && after.creditLimit() == before.creditLimit())
        return std::nullopt;
    return CreditChange{before.allowCredit(), after.allowCredit(), before.creditLimit(), after.creditLimit()};
}

bool CustomerDetailModel::hasUnsavedEdits() const
{
    return m_form.hasEdits() || creditLimitProblem();
}

bool CustomerDetailModel::save(const std::function<void()>& alongside)
{
    if (creditLimitProblem())
        return false;
    const bool wasNew = isNew();
    try {
        m_customer = performUnitOfWork(m_context, [&] {
            const Ref<Customer> live = m_form.writeTo(m_context);
            if (wasNew)
                live->setCreatedAt(Clock::now());
            if (alongside)
                alongside();
            return live;
        });
    } catch (const Refusal& refusal) {
        tellWriteFailure(refusal.description());
        return false;
    }
    tellWriteFailure(std::nullopt);
    m_form.reopen(m_customer);
    readCreditLimit();
    Q_EMIT fieldsChanged();
    return true;
}

void CustomerDetailModel::discardEdits()
{
    Q_ASSERT(!isNew());
    m_form.discard();
    readCreditLimit();
    Q_EMIT fieldsChanged();
}

void CustomerDetailModel::readCreditLimit()
{
    m_creditLimitText = QString::number(m_form.edits()->creditLimit(), 'f', NumberEntry::centPlaces);
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

bool CustomerDetailModel::canEnterOpeningBalance()
{
    if (isNew())
        return false;
    return readOrTell(true, [this] { return m_accounts.openingBalance(m_customer) == nullptr; });
}

QString CustomerDetailModel::ageText(const QList<AccountEntry>& ledger) const
{
    if (ledger.isEmpty() || ledger.last().balance <= Tolerance::credit)
        return {};
    const AgeBuckets age = AccountsService::age(ledger, Clock::now());
    const std::pair<const char*, double> buckets[] = {
        {"0–30 days", age.current}, {"31–60 days", age.days31to60}, {"61–90 days", age.days61to90}, {"Over 90 days", age.over90}};
    QStringList parts;
    for (const auto& [title, amount] : buckets)
        parts << QString::fromUtf8(title) + u' ' + money(amount);
    return parts.join(QStringLiteral(" · "));
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

bool CustomerDetailModel::deleteCustomer(const std::function<void()>& alongside)
{
    if (!isNew()) {
        try {
            performUnitOfWork(m_context, [&] {
                if (alongside)
                    alongside();
                m_context.remove(m_customer);
            });
        } catch (const Refusal& refusal) {
            tellWriteFailure(refusal.description());
            return false;
        }
    }
    tellWriteFailure(std::nullopt);
    Q_EMIT customerDeleted();
    return true;
}
