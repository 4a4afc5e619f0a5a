#pragma once

#include "refusal/caseerror.h"

#include <QString>

enum class TillErrorCase { shiftAlreadyOpen, noOpenShift, invalidAmount, payOutExceedsCash };

inline QString describeTillError(TillErrorCase errorCase)
{
    switch (errorCase) {
    case TillErrorCase::shiftAlreadyOpen:
        // Says "for this cashier" though any open shift of the store refuses it; the wording is kept.
        return QStringLiteral("A till shift is already open for this cashier.");
    case TillErrorCase::noOpenShift:
        return QStringLiteral("No open till shift. Open the till before selling.");
    case TillErrorCase::invalidAmount:
        return QStringLiteral("Enter an amount greater than zero.");
    case TillErrorCase::payOutExceedsCash:
        return QStringLiteral("That's more than the cash the drawer should hold. Count the drawer, or pay out less.");
    }
    Q_UNREACHABLE();
}

// Why a till operation was refused; description() is the text shown as it is.
class TillError : public CaseError<TillErrorCase, describeTillError> {
public:
    using CaseError::CaseError;
};
