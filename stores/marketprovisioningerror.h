#pragma once

#include "refusal/caseerror.h"

#include <QString>

enum class MarketProvisioningErrorCase { invalidInput };

inline QString describeMarketProvisioningError(MarketProvisioningErrorCase errorCase)
{
    switch (errorCase) {
    case MarketProvisioningErrorCase::invalidInput:
        return QStringLiteral(
            "Enter a market name, admin username, and a password of at least 6 characters.");
    }
    Q_UNREACHABLE();
}

// Why a new store wasn't made; description() is the text shown as it is.
class MarketProvisioningError
    : public CaseError<MarketProvisioningErrorCase, describeMarketProvisioningError> {
public:
    using CaseError::CaseError;
};
