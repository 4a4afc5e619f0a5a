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
                       {&Customer::schema(), &Sale::schema(), &Payment::schema(), &CustomerPayment::schema(),
                        &AccountOpeningBalance::schema()},
                       [this] { Q_EMIT customersChanged(); });
}

void CustomersViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text))
        Q_EMIT searchTextChanged();
}

QList<CustomerRow> CustomersViewModel::page(const Ref<Customer>& after, int limit)
{
    return reading(QList<CustomerRow>(), [&] {
        using Col = Customer::Col;
        Condition filter;
        if (!m_searchText.isEmpty())
            filter = Col::name.contains(m_searchText) || Col::phone.contains(m_searchText) ||
                     Col::email.contains(m_searchText);
        // The key is read back from the store: the record may hold a name edited since.
        if (after)
            filter = filter && Condition(QStringLiteral("(\"name\", \"id\") > (SELECT \"name\", \"id\" FROM "
                                                        "\"Customer\" WHERE \"id\" = ?)"),
                                         {after->idText()});
        const QList<Ref<Customer>> customers = m_context.fetch<Customer>(
            FetchDescriptor(filter).sortedBy(ascending(Col::name)).sortedBy(ascending(Col::id)).limitedTo(limit));
        const QHash<QString, double> balances = m_accounts.balancesByCustomer(customers);
        const Ref<AppSettings> settings = m_session.settings();
        const QString symbol = settings ? settings->currencySymbol() : Currency::fixedSign;
        QList<CustomerRow> rows;
        rows.reserve(customers.size());
        for (const Ref<Customer>& customer : customers) {
            CustomerRow row{customer, customer->name(), std::nullopt,
                            customer->phone().trimmed().isEmpty() ? customer->email().trimmed()
                                                                  : customer->phone().trimmed()};
            const double owed = balances.value(customer->idText());
            if (owed > 0)
                row.owesText = QStringLiteral("Owes ") + Currency::format(owed, symbol);
            rows.append(row);
        }
        return rows;
    });
}

bool CustomersViewModel::isSaved(const QUuid& customerID)
{
    return reading(false, [&] { return m_context.count<Customer>(Customer::Col::id == customerID) > 0; });
}

bool CustomersViewModel::hasCustomers()
{
    return reading(false, [this] { return m_context.count<Customer>() > 0; });
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
