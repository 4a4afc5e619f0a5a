#pragma once

#include "refusal/caseerror.h"

#include <QString>

enum class TillErrorCase { shiftAlreadyOpen, noOpenShift, invalidAmount };

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
    }
    Q_UNREACHABLE();
}

// Why a till operation was refused; description() is the text shown as it is.
class TillError : public CaseError<TillErrorCase, describeTillError> {
public:
    using CaseError::CaseError;
};
