#pragma once

#include "refusal/refusal.h"

#include <QString>


// Why a redemption or an adjustment of points was refused; description() is the text shown as it is.
class LoyaltyError : public Refusal {
public:
    enum class Case {
        belowMinimum,
        notEnoughPoints,
        moreThanTheSale,
        wouldGoNegative,
        loyaltyOff,
        needsCustomer,
        needsReason,
        invalidPoints
    };

    static LoyaltyError belowMinimum(qint64 minimum) { return LoyaltyError(Case::belowMinimum, {}, minimum); }
    static LoyaltyError notEnoughPoints(const QString& customerName, qint64 balance)
    {
        return LoyaltyError(Case::notEnoughPoints, customerName, balance);
    }
    static LoyaltyError moreThanTheSale(qint64 maxPoints)
    {
        return LoyaltyError(Case::moreThanTheSale, {}, maxPoints);
    }
    static LoyaltyError wouldGoNegative(qint64 balance)
    {
        return LoyaltyError(Case::wouldGoNegative, {}, balance);
    }
    static LoyaltyError loyaltyOff() { return LoyaltyError(Case::loyaltyOff); }
    static LoyaltyError needsCustomer() { return LoyaltyError(Case::needsCustomer); }
    static LoyaltyError needsReason() { return LoyaltyError(Case::needsReason); }
    static LoyaltyError invalidPoints() { return LoyaltyError(Case::invalidPoints); }

    Case errorCase() const { return m_case; }
    QString customerName() const { return m_customerName; }
    // The minimum, the balance or the most points that fit; 0 for the other cases.
    qint64 points() const { return m_points; }

private:
    LoyaltyError(Case errorCase, const QString& customerName = {}, qint64 points = 0)
        : Refusal(describe(errorCase, customerName, points))
        , m_case(errorCase)
        , m_customerName(customerName)
        , m_points(points)
    {
    }

    static QString describe(Case errorCase, const QString& customerName, qint64 points)
    {
        switch (errorCase) {
        case Case::belowMinimum:
            return QStringLiteral("At least %1 points must be redeemed at a time.").arg(points);
        case Case::notEnoughPoints:
            return QStringLiteral("%1 only has %2 points.").arg(customerName, QString::number(points));
        case Case::moreThanTheSale:
            return QStringLiteral("That's worth more than the sale. At most %1 points can be used on it.")
                .arg(points);
        case Case::wouldGoNegative:
            return QStringLiteral("The customer only has %1 points — you can't take away more than that.")
                .arg(points);
        case Case::loyaltyOff:
            return QStringLiteral(
                "Loyalty points are turned off. Turn them on in Settings → Loyalty Points.");
        case Case::needsCustomer:
            return QStringLiteral("Add a customer to the sale to use their points.");
        case Case::needsReason:
            return QStringLiteral("Enter a reason for the adjustment.");
        case Case::invalidPoints:
            return QStringLiteral("Enter a number of points other than zero.");
        }
        Q_UNREACHABLE();
    }

    Case m_case;
    QString m_customerName;
    qint64 m_points;
};
