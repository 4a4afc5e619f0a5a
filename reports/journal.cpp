#include "reports/journal.h"

#include "money/rounding.h"

#include <cmath>

namespace {
// Below half a cent the two totals, both rounded to cents, are the same amount.
constexpr double balanceTolerance = 0.005;
} // namespace

double Journal::totalDebit() const
{
    return total(&JournalLine::debit);
}

double Journal::totalCredit() const
{
    return total(&JournalLine::credit);
}

double Journal::total(double JournalLine::*side) const
{
    double sum = 0;
    for (const JournalLine& line : lines)
        sum += line.*side;
    return Rounding::toCents(sum);
}

bool Journal::isBalanced() const
{
    return std::abs(totalDebit() - totalCredit()) < balanceTolerance;
}
