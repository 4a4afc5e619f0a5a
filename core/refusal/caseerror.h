#pragma once

#include "refusal/refusal.h"

#include <QString>

// A refusal whose text follows from its case alone: Describe gives each case the text shown as it
// is. The subsystem's error derives from this and names its cases.
template <class CaseType, QString (*Describe)(CaseType)> class CaseError : public Refusal {
public:
    using Case = CaseType;

    explicit CaseError(Case errorCase)
        : Refusal(Describe(errorCase))
        , m_case(errorCase)
    {
    }

    Case errorCase() const { return m_case; }
    static QString describe(Case errorCase) { return Describe(errorCase); }

private:
    Case m_case;
};

// A refusal whose text carries a payload: the subsystem's error makes each case with its own text
// and names the cases.
template <class CaseType> class CasedRefusal : public Refusal {
public:
    using Case = CaseType;

    Case errorCase() const { return m_case; }

protected:
    CasedRefusal(Case errorCase, const QString& description)
        : Refusal(description)
        , m_case(errorCase)
    {
    }

private:
    Case m_case;
};
