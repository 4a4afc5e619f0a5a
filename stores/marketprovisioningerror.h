#pragma once

#include <QString>

#include <stdexcept>

// Why a new store wasn't made; description() is the text shown as it is.
class MarketProvisioningError : public std::runtime_error {
public:
    enum class Case { invalidInput };

    explicit MarketProvisioningError(Case errorCase)
        : std::runtime_error(describe(errorCase).toStdString())
        , m_case(errorCase)
    {
    }

    Case errorCase() const { return m_case; }
    QString description() const { return describe(m_case); }

    static QString describe(Case errorCase)
    {
        switch (errorCase) {
        case Case::invalidInput:
            return QStringLiteral(
                "Enter a market name, admin username, and a password of at least 6 characters.");
        }
        Q_UNREACHABLE();
    }

private:
    Case m_case;
};
