#pragma once

#include "refusal/refusal.h"

#include "money/currency.h"
#include "money/quantity.h"

#include <QString>


// Why a sale, refund or void was refused; description() is the text shown as it is. Amounts carry
// the fixed sign, whatever the store's own symbol.
class SalesError : public Refusal {
public:
    enum class Case {
        paymentMismatch,
        insufficientCashTendered,
        returnExceedsPurchased,
        emptyCart,
        noOpenTillShift,
        missingPayment,
        saleNotFound,
        nothingSelectedToReturn,
        saleWasVoided,
        voidNeedsAdmin,
        voidAlreadyVoided,
        voidRefundRow,
        voidHasRefunds,
        voidNotThisTill,
        voidNeedsReason
    };

    static SalesError paymentMismatch(double owed, double tendered)
    {
        return SalesError(Case::paymentMismatch, owed, tendered);
    }
    static SalesError insufficientCashTendered(double due, double tendered)
    {
        return SalesError(Case::insufficientCashTendered, due, tendered);
    }
    static SalesError returnExceedsPurchased(const QString& productName, double remaining)
    {
        return SalesError(Case::returnExceedsPurchased, remaining, 0, productName);
    }
    static SalesError emptyCart() { return SalesError(Case::emptyCart); }
    static SalesError noOpenTillShift() { return SalesError(Case::noOpenTillShift); }
    static SalesError missingPayment() { return SalesError(Case::missingPayment); }
    static SalesError saleNotFound() { return SalesError(Case::saleNotFound); }
    static SalesError nothingSelectedToReturn() { return SalesError(Case::nothingSelectedToReturn); }
    static SalesError saleWasVoided() { return SalesError(Case::saleWasVoided); }
    static SalesError voidNeedsAdmin() { return SalesError(Case::voidNeedsAdmin); }
    static SalesError voidAlreadyVoided() { return SalesError(Case::voidAlreadyVoided); }
    static SalesError voidRefundRow() { return SalesError(Case::voidRefundRow); }
    static SalesError voidHasRefunds() { return SalesError(Case::voidHasRefunds); }
    static SalesError voidNotThisTill() { return SalesError(Case::voidNotThisTill); }
    static SalesError voidNeedsReason() { return SalesError(Case::voidNeedsReason); }

    Case errorCase() const { return m_case; }
    // The payloads; each is 0 or empty for the cases that don't carry it.
    double owed() const { return m_case == Case::paymentMismatch ? m_first : 0; }
    double due() const { return m_case == Case::insufficientCashTendered ? m_first : 0; }
    double tendered() const { return m_tendered; }
    QString productName() const { return m_productName; }
    double remaining() const { return m_case == Case::returnExceedsPurchased ? m_first : 0; }

private:
    SalesError(Case errorCase, double first = 0, double tendered = 0, const QString& productName = {})
        : Refusal(describe(errorCase, first, tendered, productName))
        , m_case(errorCase)
        , m_first(first)
        , m_tendered(tendered)
        , m_productName(productName)
    {
    }

    static QString money(double amount) { return Currency::format(amount, Currency::fixedSign); }

    static QString describe(Case errorCase, double first, double tendered, const QString& productName)
    {
        switch (errorCase) {
        case Case::paymentMismatch:
            return QStringLiteral("Payments total %1 but the sale total is %2.")
                .arg(money(tendered), money(first));
        case Case::insufficientCashTendered:
            return QStringLiteral("Cash tendered (%1) is less than the amount due (%2).")
                .arg(money(tendered), money(first));
        case Case::returnExceedsPurchased:
            return QStringLiteral("Cannot return more of %1 than the %2 still eligible.")
                .arg(productName, Quantity::format(first));
        case Case::emptyCart:
            return QStringLiteral("Cannot complete a sale with an empty cart.");
        case Case::noOpenTillShift:
            return QStringLiteral("Open a till shift before taking payments.");
        case Case::missingPayment:
            return QStringLiteral("Add at least one payment method before completing the sale.");
        case Case::saleNotFound:
            return QStringLiteral("Could not find the original sale for that receipt number.");
        case Case::nothingSelectedToReturn:
            return QStringLiteral("Select at least one item and quantity to refund.");
        case Case::saleWasVoided:
            return QStringLiteral("This sale was voided, so there's nothing to refund.");
        case Case::voidNeedsAdmin:
            return QStringLiteral("Only an admin can void a sale, or a cashier with an admin's approval.");
        case Case::voidAlreadyVoided:
            return QStringLiteral("This sale is already voided.");
        case Case::voidRefundRow:
            return QStringLiteral("A refund can't be voided.");
        case Case::voidHasRefunds:
            return QStringLiteral("Part of this sale has already been refunded, so it can't be voided. Use "
                                  "Refunds for the rest.");
        case Case::voidNotThisTill:
            return QStringLiteral(
                "Only sales from the till that's open now can be voided. Use Refunds for older sales.");
        case Case::voidNeedsReason:
            return QStringLiteral("Enter a reason for voiding the sale.");
        }
        Q_UNREACHABLE();
    }

    Case m_case;
    double m_first;
    double m_tendered;
    QString m_productName;
};
