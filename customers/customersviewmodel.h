#pragma once

#include "customers/accountsservice.h"
#include "records/customer.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One line of the customers list, in finished text.
struct CustomerRow {
    Ref<Customer> customer;
    QString name;
    // "Owes ₵20.00" while the balance is above 0.
    std::optional<QString> owesText;
    // The phone, else the e-mail: what tells two customers of one name apart.
    QString contact;

    // The line under the name: the contact, then what is owed.
    QString detail() const;
};

// The Customers screen: the searchable list and "New Customer". A store that can't be read gives
// an empty list and says so in errorMessage.
class CustomersViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString searchPrompt() { return QStringLiteral("Search customers"); }
    static QString newCustomerTitle() { return QStringLiteral("New Customer"); }
    static QString emptyTitle() { return QStringLiteral("No customers"); }
    static QString emptyMessage()
    {
        return QStringLiteral("Add a customer to track purchase history and loyalty points.");
    }
    static QString noSelectionTitle() { return QStringLiteral("Select a customer"); }
    static QString noSelectionMessage()
    {
        return QStringLiteral("Choose a customer to view details and purchase history.");
    }

    CustomersViewModel(AccountsService& accounts, ModelContext& context, SessionStore& session,
                       QObject* parent = nullptr);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);

    static constexpr int pageSize = 100;
    // The list by name, a page at a time: the next `limit` customers after `after`, the last one
    // shown, or from the first without it; fewer than `limit` means the end. With a search, those whose name,
    // phone or e-mail contains it (case aside in the ASCII letters).
    QList<CustomerRow> page(const Ref<Customer>& after = nullptr, int limit = pageSize);
    // Any customer at all, search aside: "No customers" is only for a store without one.
    bool hasCustomers();
    bool isSaved(const QUuid& customerID);
    // "New Customer": named so for the detail to rename; it reaches the store when the detail
    // saves it.
    static Ref<Customer> addCustomer();

Q_SIGNALS:
    void searchTextChanged();
    // A save or rollback touched customers or their accounts: the rows are out of date.
    void customersChanged();

private:
    AccountsService& m_accounts;
    ModelContext& m_context;
    SessionStore& m_session;
    QString m_searchText;
};
