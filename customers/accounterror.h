#pragma once

#include "refusal/refusal.h"

#include "money/currency.h"

#include <QDate>
#include <QString>


// Why an account charge or payment was refused; description() is the text shown as it is.
// Amounts carry the fixed sign, like the checkout errors these appear beside.
class AccountError : public Refusal {
public:
    enum class Case {
        creditNotAllowed,
        creditLimitExceeded,
        moreThanOwed,
        needsCustomer,
        invalidAmount,
        notATender,
        openingBalanceInFuture,
        openingBalanceAlreadySet
    };

    static AccountError creditNotAllowed(const QString& customerName)
    {
        return AccountError(Case::creditNotAllowed, customerName);
    }
    static AccountError creditLimitExceeded(const QString& customerName, double available)
    {
        return AccountError(Case::creditLimitExceeded, customerName, available);
    }
    static AccountError moreThanOwed(double owed) { return AccountError(Case::moreThanOwed, {}, owed); }
    static AccountError needsCustomer() { return AccountError(Case::needsCustomer); }
    static AccountError invalidAmount() { return AccountError(Case::invalidAmount); }
    static AccountError notATender() { return AccountError(Case::notATender); }
    static AccountError openingBalanceInFuture() { return AccountError(Case::openingBalanceInFuture); }
    // `since` is the day the one already there dates from.
    static AccountError openingBalanceAlreadySet(const QString& customerName, double amount, const QDate& since)
    {
        return AccountError(Case::openingBalanceAlreadySet, customerName, amount, since);
    }

    Case errorCase() const { return m_case; }
    QString customerName() const { return m_customerName; }
    // The available credit, what is owed, or the opening balance already there; 0 for the other cases.
    double amount() const { return m_amount; }

private:
    AccountError(Case errorCase, const QString& customerName = {}, double amount = 0, const QDate& since = {})
        : Refusal(describe(errorCase, customerName, amount, since))
        , m_case(errorCase)
        , m_customerName(customerName)
        , m_amount(amount)
    {
    }

    static QString describe(Case errorCase, const QString& customerName, double amount, const QDate& since)
    {
        switch (errorCase) {
        case Case::creditNotAllowed:
            return QStringLiteral(
                       "%1 isn't set up to buy on credit. Turn on Allow Credit in Customers first.")
                .arg(customerName);
        case Case::creditLimitExceeded:
            return QStringLiteral(
                       "This would take %1 over their credit limit. They can have up to %2 more on "
                       "account.")
                .arg(customerName, Currency::format(amount, Currency::fixedSign));
        case Case::moreThanOwed:
            return QStringLiteral("That's more than the customer owes (%1).")
                .arg(Currency::format(amount, Currency::fixedSign));
        case Case::needsCustomer:
            return QStringLiteral("Add a customer to the sale to put it On Account.");
        case Case::invalidAmount:
            return QStringLiteral("Enter an amount greater than zero.");
        case Case::notATender:
            return QStringLiteral("Choose how the customer paid: cash, card, mobile money or other.");
        case Case::openingBalanceInFuture:
            return QStringLiteral("An opening balance is what was owed already: choose today or an earlier day.");
        case Case::openingBalanceAlreadySet:
            return QStringLiteral("%1 already has an opening balance of %2, owed since %3. A customer has only "
                                  "one; record what changed since as a sale or a payment.")
                .arg(customerName, Currency::format(amount, Currency::fixedSign),
                     since.toString(QStringLiteral("MMM d, yyyy")));
        }
        Q_UNREACHABLE();
    }

    Case m_case;
    QString m_customerName;
    double m_amount;
};
