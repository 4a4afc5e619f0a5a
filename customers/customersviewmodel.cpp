#include "customers/customersviewmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "records/sale.h"
#include "store/storeerror.h"

CustomersViewModel::CustomersViewModel(AccountsService& accounts, ModelContext& context,
                                       SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_accounts(accounts)
    , m_context(context)
    , m_session(session)
{
    m_context.onChange(this,
                       {&Customer::schema(), &Sale::schema(), &Payment::schema(), &CustomerPayment::schema()},
                       [this] { Q_EMIT customersChanged(); });
}

void CustomersViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text))
        Q_EMIT searchTextChanged();
}

QList<Ref<Customer>> CustomersViewModel::filteredCustomers(const QList<Ref<Customer>>& customers) const
{
    const QString needle = m_searchText.toLower();
    if (needle.isEmpty())
        return customers;
    QList<Ref<Customer>> result;
    for (const Ref<Customer>& customer : customers) {
        if (customer->name().toLower().contains(needle) || customer->phone().toLower().contains(needle) ||
            customer->email().toLower().contains(needle))
            result.append(customer);
    }
    return result;
}

QList<CustomerRow> CustomersViewModel::rows()
{
    try {
        // The search runs in memory, where lower-casing is Unicode's.
        const QList<Ref<Customer>> customers = filteredCustomers(
            m_context.fetch<Customer>(FetchDescriptor().sortedBy(ascending(Customer::Col::name))));
        const QHash<QString, double> balances = m_accounts.balancesByCustomer();
        const Ref<AppSettings> settings = m_session.settings();
        const QString symbol = settings ? settings->currencySymbol() : Currency::fixedSign;
        QList<CustomerRow> result;
        result.reserve(customers.size());
        for (const Ref<Customer>& customer : customers) {
            CustomerRow row{customer, customer->name(), std::nullopt,
                            customer->phone().trimmed().isEmpty() ? customer->email().trimmed()
                                                                  : customer->phone().trimmed()};
            const double owed = balances.value(customer->idText());
            if (owed > 0)
                row.owesText = QStringLiteral("Owes ") + Currency::format(owed, symbol);
            result.append(row);
        }
        setErrorMessage(std::nullopt);
        return result;
    } catch (const Refusal& error) {
        setErrorMessage(error.description());
        return {};
    }
}

QString CustomerRow::detail() const
{
    QStringList parts;
    if (!contact.isEmpty())
        parts << contact;
    if (owesText)
        parts << *owesText;
    return parts.join(QStringLiteral(" · "));
}

Ref<Customer> CustomersViewModel::addCustomer()
{
    auto customer = std::make_shared<Customer>();
    customer->setName(newCustomerTitle());
    return customer;
}
