#pragma once

#include "refusal/caseerror.h"

#include <QString>

enum class MarketProvisioningErrorCase { invalidInput, nameInUse };

inline QString describeMarketProvisioningError(MarketProvisioningErrorCase errorCase)
{
    switch (errorCase) {
    case MarketProvisioningErrorCase::invalidInput:
        return QStringLiteral(
            "Enter a market name, admin username, and a password of at least 6 characters.");
    case MarketProvisioningErrorCase::nameInUse:
        return QStringLiteral("You already have a store with that name. Choose another.");
    }
    Q_UNREACHABLE();
}

// Why a new store wasn't made; description() is the text shown as it is.
class MarketProvisioningError
    : public CaseError<MarketProvisioningErrorCase, describeMarketProvisioningError> {
public:
    using CaseError::CaseError;
};
