#pragma once

#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "records/customer.h"
#include "records/loyaltyentry.h"
#include "records/sale.h"
#include "startup/sessionstore.h"
#include "store/formdraft.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

// The detail of one customer, or of a new one not yet in the store: contact and credit edits kept
// here until "Save" writes them in one unit of work, the points, the account and the purchases,
// the statement, and deleting with its warnings. Failures go to errorMessage.
class CustomerDetailModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr int purchasePageSize = 50;

    static QString contactSection() { return QStringLiteral("Contact"); }
    static QString nameTitle() { return QStringLiteral("Name"); }
    static QString phoneTitle() { return QStringLiteral("Phone"); }
    static QString emailTitle() { return QStringLiteral("Email"); }
    static QString addressTitle() { return QStringLiteral("Address"); }
    static QString loyaltySection() { return QStringLiteral("Loyalty Points"); }
    static QString pointsBalanceTitle() { return QStringLiteral("Points Balance"); }
    static QString adjustPointsTitle() { return QStringLiteral("Adjust Points…"); }
    static QString pointsHistoryTitle() { return QStringLiteral("Points History"); }
    static QString noPointsMessage()
    {
        return QStringLiteral(
            "No points yet. Points are earned automatically when this customer is on a sale.");
    }
    static QString accountSection() { return QStringLiteral("Account (credit sales)"); }
    static QString allowCreditTitle() { return QStringLiteral("Allow Credit (On Account)"); }
    static QString creditLimitTitle() { return QStringLiteral("Credit Limit"); }
    static QString creditLimitNote() { return QStringLiteral("(0 = no limit)"); }
    static QString balanceOwedTitle() { return QStringLiteral("Balance Owed"); }
    static QString receivePaymentTitle() { return QStringLiteral("Receive Payment…"); }
    static QString openingBalanceTitle() { return QStringLiteral("Opening Balance…"); }
    static QString statementTitle() { return QStringLiteral("Statement PDF"); }
    static QString accountHistoryTitle() { return QStringLiteral("Account History"); }
    static QString purchaseSection() { return QStringLiteral("Purchase History"); }
    static QString noPurchasesMessage() { return QStringLiteral("No purchases yet."); }
    static QString voidedMark() { return QStringLiteral("Voided"); }
    static QString deleteTitle() { return QStringLiteral("Delete this customer?"); }

    CustomerDetailModel(AccountsService& accounts, LoyaltyService& loyalty, ModelContext& context,
                        SessionStore& session, Ref<Customer> customer, QObject* parent = nullptr);

    // The store's record, or the new one Save will put there.
    Ref<Customer> customer() const { return m_customer; }
    // Not yet in the store: Save inserts it; points and payments wait until then.
    bool isNew() const { return m_form.isNew(); }
    QString name() const { return m_form.edits()->name(); }
    void setName(const QString& text) { edit(&Customer::name, &Customer::setName, text); }
    QString phone() const { return m_form.edits()->phone(); }
    void setPhone(const QString& text) { edit(&Customer::phone, &Customer::setPhone, text); }
    QString email() const { return m_form.edits()->email(); }
    void setEmail(const QString& text) { edit(&Customer::email, &Customer::setEmail, text); }
    QString address() const { return m_form.edits()->address(); }
    void setAddress(const QString& text) { edit(&Customer::address, &Customer::setAddress, text); }
    bool allowCredit() const { return m_form.edits()->allowCredit(); }
    void setAllowCredit(bool allow) { edit(&Customer::allowCredit, &Customer::setAllowCredit, allow); }
    // A money field: "1,000" is a thousand; text that isn't an amount is refused, never taken
    // as 0, which would mean no limit.
    QString creditLimitText() const { return m_creditLimitText; }
    void setCreditLimitText(const QString& text);
    // Why the credit limit as typed can't be saved; absent while it can.
    std::optional<QString> creditLimitProblem() const;

    // What Save would do to the customer's credit, which a cashier can't change alone.
    struct CreditChange {
        bool allowBefore = false;
        bool allowAfter = false;
        double limitBefore = 0;
        double limitAfter = 0;
        // "Allow credit off → on; credit limit ₵0.00 → ₵500.00", naming only what changes, with
        // the log's fixed sign.
        QString details() const;
    };
    // Absent when Save would leave the credit as it is, or the limit as typed can't be saved.
    std::optional<CreditChange> creditChange() const;

    // Whether the fields differ from the saved customer, so that leaving it can ask first. A new
    // customer nobody typed into has nothing to lose.
    bool hasUnsavedEdits() const;
    // Writes the edits to the customer, inserting a new one, in one unit of work. False when the
    // credit limit can't be read (creditLimitProblem says why) or the store refused (errorMessage);
    // the edits stay either way and nothing is written. `alongside` is written in the same unit of
    // work, after the edits.
    bool save(const std::function<void()>& alongside = {});
    // The fields as the customer holds them, dropping what was typed. A new customer's detail is
    // closed instead.
    void discardEdits();

    // Before the detail reads everything anew: a failed read before is no longer news (a failed
    // save still is).
    void startReading()
    {
        if (std::exchange(m_readFailed, false))
            setErrorMessage(std::nullopt);
    }

    QString pointsBalanceText() const;
    QList<Ref<LoyaltyEntry>> pointsHistory();
    // 0 when the store can't be read, with errorMessage saying so.
    double balanceOwed();
    QString balanceOwedText();
    QList<AccountEntry> accountHistory();
    // A saved customer without an opening balance can be given one; true too when the store can't
    // tell, as the sheet then refuses in its own words.
    bool canEnterOpeningBalance();
    // What of the balance is how old, from the ledger accountHistory gave: "0–30 days ₵20.00 ·
    // 31–60 days ₵0.00 · 61–90 days ₵0.00 · Over 90 days ₵5.00". Empty while nothing is owed.
    QString ageText(const QList<AccountEntry>& ledger) const;
    // Newest first, a page at a time; `offset` counts rows already shown. Voided ones included.
    QList<Ref<Sale>> purchases(int offset = 0);

    AccountStatement statement(std::optional<QDate> from);
    QString statementSubtitle() const;
    // Without extension: the save dialog adds ".pdf".
    QString statementFileName() const;

    // The lines under "Delete this customer?", in order; the last is always "This cannot be undone."
    QStringList deleteWarnings();
    // Sales keep their own record, without the customer; the account history goes with it.
    // `alongside` is written in the same unit of work, before the customer goes.
    bool deleteCustomer(const std::function<void()>& alongside = {});

Q_SIGNALS:
    // A save or rollback touched what this detail shows.
    void detailChanged();
    // The customer is gone, whether at once or once an admin approved.
    void customerDeleted();

private:
    // The fallback when the store can't be read, with the reason in errorMessage; a later read
    // that works doesn't wipe it.
    template <class Result, class Read> Result readOrTell(Result fallback, Read read)
    {
        try {
            return read();
        } catch (const Refusal& refusal) {
            setErrorMessage(refusal.description());
            m_readFailed = true;
            return fallback;
        }
    }
    void tellWriteFailure(const std::optional<QString>& message)
    {
        setErrorMessage(message);
        m_readFailed = false;
    }
    template <class Get, class Set, class Value> void edit(Get get, Set set, const Value& value)
    {
        Customer& edits = *m_form.edits();
        if ((edits.*get)() == value)
            return;
        (edits.*set)(value);
        Q_EMIT fieldsChanged();
    }
    QString money(double amount) const;
    std::optional<double> creditLimit() const;
    // The limit as the form shows it: "500" is shown as "500.00".
    void readCreditLimit();

    AccountsService& m_accounts;
    LoyaltyService& m_loyalty;
    ModelContext& m_context;
    SessionStore& m_session;
    Ref<Customer> m_customer;
    // The contact and credit fields; the limit is typed as text and goes onto it once it reads as
    // an amount.
    FormDraft<Customer> m_form;
    QString m_creditLimitText;
    bool m_readFailed = false; // errorMessage tells of a read, not of a save or delete
};
