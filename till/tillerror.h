#pragma once

#include <QString>

#include <stdexcept>

// Why a till operation was refused; description() is the text shown as it is.
class TillError : public std::runtime_error {
public:
    enum class Case { shiftAlreadyOpen, noOpenShift, invalidAmount };

    explicit TillError(Case errorCase)
        : std::runtime_error(describe(errorCase).toStdString())
        , m_case(errorCase)
    {
    }

    Case errorCase() const { return m_case; }
    QString description() const { return describe(m_case); }

    static QString describe(Case errorCase)
    {
        switch (errorCase) {
        case Case::shiftAlreadyOpen:
            // Says "for this cashier" though any open shift of the store refuses it; the wording is kept.
            return QStringLiteral("A till shift is already open for this cashier.");
        case Case::noOpenShift:
            return QStringLiteral("No open till shift. Open the till before selling.");
        case Case::invalidAmount:
            return QStringLiteral("Enter an amount greater than zero.");
        }
        Q_UNREACHABLE();
    }

private:
    Case m_case;
};
