#pragma once

#include <QString>

#include <stdexcept>

// A refusal whose text follows from its case alone: Describe gives each case the text shown as it
// is. The subsystem's error derives from this and names its cases.
template <class CaseType, QString (*Describe)(CaseType)> class CaseError : public std::runtime_error {
public:
    using Case = CaseType;

    explicit CaseError(Case errorCase)
        : std::runtime_error(Describe(errorCase).toStdString())
        , m_case(errorCase)
    {
    }

    Case errorCase() const { return m_case; }
    QString description() const { return Describe(m_case); }
    static QString describe(Case errorCase) { return Describe(errorCase); }

private:
    Case m_case;
};
