#pragma once

#include "records/accountopeningbalance.h"
#include "records/customer.h"
#include "records/customerpayment.h"
#include "records/enums.h"
#include "records/tillshift.h"
#include "records/user.h"
#include "store/modelcontext.h"

#include <QDate>
#include <QDateTime>
#include <QHash>
#include <QStringList>
#include <QUuid>

#include <optional>

// One line of a customer's account, worked out from the records; nothing of it is stored.
struct AccountEntry {
    enum class Kind { creditSale, refundToAccount, payment, openingBalance };

    QUuid id; // of the Payment, CustomerPayment or AccountOpeningBalance
    QDateTime date;
    Kind kind = Kind::creditSale;
    QString reference;
    double charge = 0;
    double credit = 0;
    double balance = 0; // running, in cents

    QString description() const;
};

// What one customer owes, by age of the charges still unpaid.
struct AgeBuckets {
    double current = 0; // 0 to 30 days
    double days31to60 = 0;
    double days61to90 = 0;
    double over90 = 0;
};

struct AgedBalance {
    QUuid id; // the customer's
    QString customerName;
    QString phone;
    double creditLimit = 0;
    double current = 0;
    double days31to60 = 0;
    double days61to90 = 0;
    double over90 = 0;

    double balance() const;
};

// A statement as a table of finished text, for the PDF table document.
struct AccountStatement {
    QString title;
    QStringList headers;
    QList<QStringList> rows;
};

// Customers' accounts on credit. There is no balance field: every answer is worked out again from
// the on-account payments of the customer's sales, the customer's own payments and the opening
// balance carried over from before, so a voided sale drops out by itself. Each amount enters an account rounded to cents, whether the ledger or
// a sum in the store adds it, so the balance, the ledger, the statement and the aged list agree
// to the cent. Reads throw StoreError.
class AccountsService {
public:
    explicit AccountsService(ModelContext& context);

    // Oldest first; at one instant, the opening balance, then sales, then payments.
    QList<AccountEntry> ledger(const Ref<Customer>& customer);
    // Negative when the customer is in credit. Summed in the store, equal to the ledger's last balance.
    double balance(const Ref<Customer>& customer);
    // Absent when the customer has no limit (0 or less); negative when over it.
    std::optional<double> availableCredit(const Ref<Customer>& customer);
    // Throws AccountError when `amount` may not go on the customer's account; the customer may be absent.
    void checkCredit(const Ref<Customer>& customer, double amount);
    // One unit of work; throws AccountError before writing anything, or StoreError with nothing
    // written.
    Ref<CustomerPayment> receivePayment(const Ref<Customer>& customer, double amount,
                                        PaymentMethodType method, const QString& reference,
                                        const QString& note, const Ref<User>& by,
                                        const Ref<TillShift>& tillShift);
    // What the customer owed before the account was kept here, or null while none was entered.
    Ref<AccountOpeningBalance> openingBalance(const Ref<Customer>& customer);
    // Throws AccountError when this opening balance may not be entered: an amount of 0 or less, a
    // day still to come, or a customer who has one already.
    void checkOpeningBalance(const Ref<Customer>& customer, double amount, const QDate& owedSince);
    // A charge dated from the start of `owedSince`, so it ages from then; it joins an open unit of
    // work, or is one of its own. Throws AccountError before writing anything, or StoreError.
    Ref<AccountOpeningBalance> recordOpeningBalance(const Ref<Customer>& customer, double amount,
                                                    const QDate& owedSince, const QString& note,
                                                    const Ref<User>& by);
    // Cash (or an unknown method) taken for accounts during the shift, in cents.
    double cashReceived(const Ref<TillShift>& shift);

    // Customers owing anything, largest balance first; the input order among equals.
    QList<AgedBalance> agedBalances(const QList<Ref<Customer>>& customers, const QDateTime& asOf);
    // Payments and refunds settle the oldest charges first; a leftover credit is ignored.
    static AgeBuckets age(const QList<AccountEntry>& ledger, const QDateTime& asOf);
    // Entries before the start of `from` are summed into a brought-forward row.
    AccountStatement statement(const Ref<Customer>& customer, std::optional<QDate> from);

    // The balance of every customer with any account activity, by id, from two grouped sums rather
    // than a ledger each; equal to balance() for each. `only` narrows it to those customers.
    QHash<QString, double> balancesByCustomer(const std::optional<QList<Ref<Customer>>>& only = std::nullopt);

private:
    ModelContext& m_context;
};
