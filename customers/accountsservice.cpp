#include "customers/accountsservice.h"

#include "clock/clock.h"
#include "customers/accounterror.h"
#include "money/currency.h"
#include "money/rounding.h"
#include "money/tolerances.h"
#include "records/payment.h"
#include "records/sale.h"
#include "store/unitofwork.h"

#include <algorithm>

namespace {
QString raw(PaymentMethodType method)
{
    return PaymentMethodTypes::raw(method);
}

QString voidedRaw()
{
    return SaleStatuses::raw(SaleStatus::voided);
}

// Mirrors PaymentMethodTypes::fromRaw in SQL: anything that isn't another method reads as cash.
QString readsAsCashSql(const char* column)
{
    return QStringLiteral("%1 NOT IN (?, ?, ?, ?)").arg(QLatin1String(column));
}

QVariantList notCash()
{
    return {raw(PaymentMethodType::card), raw(PaymentMethodType::mobileMoney), raw(PaymentMethodType::other),
            raw(PaymentMethodType::onAccount)};
}

QString money(double amount)
{
    return Currency::format(amount, Currency::fixedSign);
}

// Every amount enters an account in whole cents, here and in SQL alike, so the balance, the ledger,
// the statement and the aged list all add the same numbers and no sum can drift a cent from the
// others. SQLite's ROUND of a double halves away from zero, as Rounding does.
double entering(double amount)
{
    return Rounding::toCents(amount);
}

QString centsTotalSql(const QString& column)
{
    return QStringLiteral("TOTAL(ROUND(%1 * 100)) / 100").arg(column);
}

QString dateText(const QDateTime& date)
{
    return date.toLocalTime().toString(QStringLiteral("yyyy-MM-dd"));
}
} // namespace

QString AccountEntry::description() const
{
    switch (kind) {
    case Kind::creditSale:
        return QStringLiteral("Sale ") + reference;
    case Kind::refundToAccount:
        return QStringLiteral("Refund ") + reference;
    case Kind::payment:
        return reference.isEmpty() ? QStringLiteral("Payment received")
                                   : QStringLiteral("Payment received — ") + reference;
    case Kind::openingBalance:
        return reference.isEmpty() ? QStringLiteral("Opening balance")
                                   : QStringLiteral("Opening balance — ") + reference;
    }
    Q_UNREACHABLE();
}

double AgedBalance::balance() const
{
    return Rounding::toCents(current + days31to60 + days61to90 + over90);
}

AccountsService::AccountsService(ModelContext& context)
    : m_context(context)
{
}

QList<AccountEntry> AccountsService::ledger(const Ref<Customer>& customer)
{
    Q_ASSERT(customer);
    const QString onAccount = raw(PaymentMethodType::onAccount);
    // Both queries start from Sale(customer, timestamp). "+methodRaw" keeps SQLite off
    // Payment(methodRaw, timestamp), which would walk every on-account payment of the store.
    const QList<Ref<Sale>> sales = m_context.fetch<Sale>(
        FetchDescriptor(
            Condition(QStringLiteral("\"customer\" = ? AND \"statusRaw\" != ? AND EXISTS (SELECT 1 "
                                     "FROM \"Payment\" p WHERE p.\"sale\" = \"Sale\".\"id\" AND "
                                     "+p.\"methodRaw\" = ?)"),
                      {customer->idText(), voidedRaw(), onAccount}))
            .sortedBy(ascending(Sale::Col::timestamp)));
    const QList<Ref<Payment>> payments = m_context.fetch<Payment>(FetchDescriptor(
        Condition(QStringLiteral("\"sale\" IN (SELECT \"id\" FROM \"Sale\" WHERE \"customer\" = ? AND "
                                 "\"statusRaw\" != ?) AND +\"methodRaw\" = ?"),
                  {customer->idText(), voidedRaw(), onAccount})));
    QHash<QString, QList<Ref<Payment>>> paymentsOfSale;
    for (const Ref<Payment>& payment : payments)
        paymentsOfSale[payment->rawValue(Payment::saleField).toString()].append(payment);

    QList<AccountEntry> entries;
    // First in the list, so that the stable sort keeps it before a sale at the same instant.
    if (const Ref<AccountOpeningBalance> opening = openingBalance(customer)) {
        AccountEntry entry;
        entry.id = opening->id();
        entry.date = opening->owedSince();
        entry.kind = AccountEntry::Kind::openingBalance;
        entry.reference = opening->note();
        entry.charge = entering(opening->amount());
        entries.append(entry);
    }
    for (const Ref<Sale>& sale : sales) {
        for (const Ref<Payment>& payment : paymentsOfSale.value(sale->idText())) {
            AccountEntry entry;
            entry.id = payment->id();
            entry.date = sale->timestamp();
            entry.reference = sale->invoiceNumber();
            const double amount = entering(payment->amount());
            if (payment->amount() >= 0) {
                entry.kind = AccountEntry::Kind::creditSale;
                entry.charge = amount;
            } else {
                entry.kind = AccountEntry::Kind::refundToAccount;
                entry.credit = -amount;
            }
            entries.append(entry);
        }
    }
    const QList<Ref<CustomerPayment>> received =
        m_context.fetch<CustomerPayment>(FetchDescriptor(CustomerPayment::Col::customer == customer)
                                             .sortedBy(ascending(CustomerPayment::Col::timestamp)));
    for (const Ref<CustomerPayment>& payment : received) {
        QStringList parts{PaymentMethodTypes::label(PaymentMethodTypes::fromRaw(payment->methodRaw()))};
        if (!payment->reference().isEmpty())
            parts.append(payment->reference());
        AccountEntry entry;
        entry.id = payment->id();
        entry.date = payment->timestamp();
        entry.kind = AccountEntry::Kind::payment;
        entry.reference = parts.join(QLatin1Char(' '));
        entry.credit = entering(payment->amount());
        entries.append(entry);
    }

    std::stable_sort(entries.begin(), entries.end(),
                     [](const AccountEntry& a, const AccountEntry& b) { return a.date < b.date; });
    double running = 0;
    for (AccountEntry& entry : entries) {
        running = Rounding::toCents(running + entry.charge - entry.credit);
        entry.balance = running;
    }
    return entries;
}

double AccountsService::balance(const Ref<Customer>& customer)
{
    Q_ASSERT(customer);
    // The ledger's last running balance, without reading the ledger: both sums take the same
    // indexes as ledger() does.
    const QString amount = centsTotalSql(QStringLiteral("\"amount\""));
    return Rounding::toCents(
        m_context
            .scalar(
                QStringLiteral("SELECT (SELECT %1 FROM \"Payment\" WHERE \"sale\" IN (SELECT \"id\" FROM "
                               "\"Sale\" WHERE \"customer\" = ? AND \"statusRaw\" != ?) AND +\"methodRaw\" = "
                               "?) + (SELECT %1 FROM \"AccountOpeningBalance\" WHERE \"customer\" = ?) - (SELECT "
                               "%1 FROM \"CustomerPayment\" WHERE \"customer\" = ?)")
                    .arg(amount),
                {customer->idText(), voidedRaw(), raw(PaymentMethodType::onAccount), customer->idText(),
                 customer->idText()})
            .toDouble());
}

std::optional<double> AccountsService::availableCredit(const Ref<Customer>& customer)
{
    Q_ASSERT(customer);
    if (customer->creditLimit() <= 0)
        return std::nullopt;
    return Rounding::toCents(customer->creditLimit() - balance(customer));
}

void AccountsService::checkCredit(const Ref<Customer>& customer, double amount)
{
    if (amount <= Tolerance::credit)
        return;
    if (!customer)
        throw AccountError::needsCustomer();
    if (!customer->allowCredit())
        throw AccountError::creditNotAllowed(customer->name());
    const std::optional<double> available = availableCredit(customer);
    if (available && amount > *available + Tolerance::credit)
        throw AccountError::creditLimitExceeded(customer->name(), *available);
}

Ref<CustomerPayment> AccountsService::receivePayment(const Ref<Customer>& customer, double amount,
                                                     PaymentMethodType method, const QString& reference,
                                                     const QString& note, const Ref<User>& by,
                                                     const Ref<TillShift>& tillShift)
{
    Q_ASSERT(customer);
    const double rounded = Rounding::toCents(amount);
    // NaN fails the comparison too, so it is refused with the rest.
    if (!(rounded > 0))
        throw AccountError::invalidAmount();
    if (method == PaymentMethodType::onAccount)
        throw AccountError::notATender();
    const double owed = balance(customer);
    if (rounded > owed + Tolerance::credit)
        throw AccountError::moreThanOwed(owed);

    auto payment = std::make_shared<CustomerPayment>();
    payment->setCustomer(customer);
    payment->setAmount(rounded);
    payment->setMethodRaw(raw(method));
    payment->setReference(reference);
    payment->setNote(note);
    payment->setReceivedBy(by);
    payment->setTillShift(tillShift);
    payment->setTimestamp(Clock::now());
    performUnitOfWork(m_context, [&] { m_context.insert(payment); });
    return payment;
}

Ref<AccountOpeningBalance> AccountsService::openingBalance(const Ref<Customer>& customer)
{
    Q_ASSERT(customer);
    return m_context.fetchFirst<AccountOpeningBalance>(
        FetchDescriptor(AccountOpeningBalance::Col::customer == customer));
}

void AccountsService::checkOpeningBalance(const Ref<Customer>& customer, double amount, const QDate& owedSince)
{
    Q_ASSERT(customer);
    // NaN fails the comparison too, so it is refused with the rest.
    if (!(Rounding::toCents(amount) > 0))
        throw AccountError::invalidAmount();
    if (!owedSince.isValid() || owedSince > Clock::now().toLocalTime().date())
        throw AccountError::openingBalanceInFuture();
    // One only: a second would be a charge nobody can tell from a mistake, and the first can't be
    // changed under entries that followed it. What changed since is a sale or a payment.
    if (const Ref<AccountOpeningBalance> existing = openingBalance(customer))
        throw AccountError::openingBalanceAlreadySet(customer->name(), existing->amount(),
                                                     existing->owedSince().toLocalTime().date());
}

Ref<AccountOpeningBalance> AccountsService::recordOpeningBalance(const Ref<Customer>& customer, double amount,
                                                                 const QDate& owedSince, const QString& note,
                                                                 const Ref<User>& by)
{
    checkOpeningBalance(customer, amount, owedSince);
    auto opening = std::make_shared<AccountOpeningBalance>();
    opening->setCustomer(customer);
    opening->setAmount(Rounding::toCents(amount));
    opening->setOwedSince(owedSince.startOfDay());
    opening->setNote(note.trimmed());
    opening->setEnteredBy(by);
    opening->setTimestamp(Clock::now());
    performUnitOfWork(m_context, [&] { m_context.insert(opening); });
    return opening;
}

double AccountsService::cashReceived(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    QVariantList bindings{shift->idText()};
    bindings.append(notCash());
    return Rounding::toCents(
        m_context
            .scalar(QStringLiteral(
                        "SELECT TOTAL(\"amount\") FROM \"CustomerPayment\" WHERE \"tillShift\" = ? AND ") +
                        readsAsCashSql("\"methodRaw\""),
                    bindings)
            .toDouble());
}

QHash<QString, double> AccountsService::balancesByCustomer(const std::optional<QList<Ref<Customer>>>& only)
{
    struct CustomerSum {
        QString customer;
        double total;
    };
    QVariantList ids;
    if (only) {
        if (only->isEmpty())
            return {};
        for (const Ref<Customer>& customer : *only)
            ids.append(customer->idText());
    }
    const auto sumsById = [&](const QString& sql, QVariantList bindings, const QString& customerColumn) {
        const QString among = only ? QStringLiteral(" AND %1 IN (%2)")
                                         .arg(customerColumn, QStringList(ids.size(), QStringLiteral("?")).join(u','))
                                   : QString();
        return m_context.rows<CustomerSum>(sql.arg(among), bindings + ids,
                                           [](const SqliteStatement& row) {
                                               return CustomerSum{row.text(0), row.real(1)};
                                           });
    };
    const QString amount = centsTotalSql(QStringLiteral("p.\"amount\""));
    // Driven by Payment(methodRaw, timestamp) over the on-account payments alone, a small share of all.
    const QList<CustomerSum> charges = sumsById(
        QStringLiteral("SELECT s.\"customer\", ") + amount +
            QStringLiteral(" FROM \"Payment\" p JOIN \"Sale\" s ON s.\"id\" = p.\"sale\" WHERE "
                           "p.\"methodRaw\" = ? AND s.\"statusRaw\" != ? AND s.\"customer\" IS NOT NULL%1 "
                           "GROUP BY s.\"customer\""),
        {raw(PaymentMethodType::onAccount), voidedRaw()}, QStringLiteral("s.\"customer\""));
    const QList<CustomerSum> openings = sumsById(
        QStringLiteral("SELECT p.\"customer\", ") + amount +
            QStringLiteral(" FROM \"AccountOpeningBalance\" p WHERE p.\"customer\" IS NOT NULL%1 GROUP BY "
                           "p.\"customer\""),
        {}, QStringLiteral("p.\"customer\""));
    const QList<CustomerSum> credits = sumsById(
        QStringLiteral("SELECT p.\"customer\", ") + amount +
            QStringLiteral(" FROM \"CustomerPayment\" p WHERE p.\"customer\" IS NOT NULL%1 GROUP BY p.\"customer\""),
        {}, QStringLiteral("p.\"customer\""));
    QHash<QString, double> balances;
    for (const CustomerSum& sum : charges)
        balances.insert(sum.customer, sum.total);
    for (const CustomerSum& sum : openings)
        balances[sum.customer] += sum.total;
    for (const CustomerSum& sum : credits)
        balances[sum.customer] -= sum.total;
    for (double& balance : balances)
        balance = Rounding::toCents(balance);
    return balances;
}

AgeBuckets AccountsService::age(const QList<AccountEntry>& ledger, const QDateTime& asOf)
{
    double pool = 0;
    for (const AccountEntry& entry : ledger)
        pool += entry.credit;

    AgeBuckets buckets;
    const QDate today = asOf.toLocalTime().date();
    for (const AccountEntry& entry : ledger) {
        if (entry.charge <= 0)
            continue;
        const double applied = std::min(entry.charge, pool);
        pool -= applied;
        const double left = entry.charge - applied;
        if (left <= Tolerance::credit)
            continue;
        const QDate day = entry.date.toLocalTime().date();
        const qint64 days = day.isValid() && today.isValid() ? day.daysTo(today) : 0;
        if (days <= 30)
            buckets.current += left;
        else if (days <= 60)
            buckets.days31to60 += left;
        else if (days <= 90)
            buckets.days61to90 += left;
        else
            buckets.over90 += left;
    }
    buckets.current = Rounding::toCents(buckets.current);
    buckets.days31to60 = Rounding::toCents(buckets.days31to60);
    buckets.days61to90 = Rounding::toCents(buckets.days61to90);
    buckets.over90 = Rounding::toCents(buckets.over90);
    return buckets;
}

QList<AgedBalance> AccountsService::agedBalances(const QList<Ref<Customer>>& customers, const QDateTime& asOf)
{
    // Unpaid charges never add up to more than the balance, so only those owing need a ledger.
    const QHash<QString, double> balances = balancesByCustomer();
    QList<AgedBalance> rows;
    for (const Ref<Customer>& customer : customers) {
        if (balances.value(customer->idText()) <= Tolerance::credit)
            continue;
        const AgeBuckets buckets = age(ledger(customer), asOf);
        AgedBalance row{customer->id(),  customer->name(),   customer->phone(),  customer->creditLimit(),
                        buckets.current, buckets.days31to60, buckets.days61to90, buckets.over90};
        if (row.balance() > Tolerance::credit)
            rows.append(row);
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const AgedBalance& a, const AgedBalance& b) { return a.balance() > b.balance(); });
    return rows;
}

AccountStatement AccountsService::statement(const Ref<Customer>& customer, std::optional<QDate> from)
{
    Q_ASSERT(customer);
    AccountStatement result;
    result.title = QStringLiteral("Statement — ") + customer->name();
    result.headers = {QStringLiteral("Date"), QStringLiteral("Details"), QStringLiteral("Charges"),
                      QStringLiteral("Payments"), QStringLiteral("Balance")};

    const QList<AccountEntry> entries = ledger(customer);
    qsizetype first = 0;
    if (from) {
        const QDateTime start = from->startOfDay();
        double broughtForward = 0;
        while (first < entries.size() && entries[first].date < start)
            broughtForward = entries[first++].balance;
        result.rows.append({from->toString(QStringLiteral("yyyy-MM-dd")),
                            QStringLiteral("Balance brought forward"), QString(), QString(),
                            money(broughtForward)});
    }
    for (qsizetype i = first; i < entries.size(); ++i) {
        const AccountEntry& entry = entries[i];
        result.rows.append({dateText(entry.date), entry.description(),
                            entry.charge == 0 ? QString() : money(entry.charge),
                            entry.credit == 0 ? QString() : money(entry.credit), money(entry.balance)});
    }
    const double owed = entries.isEmpty() ? 0.0 : Rounding::toCents(entries.last().balance);
    result.rows.append({QString(), QStringLiteral("Balance owed"), QString(), QString(), money(owed)});
    return result;
}
