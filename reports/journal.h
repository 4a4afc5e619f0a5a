#pragma once

#include "reports/ledgeraccount.h"

#include <QDateTime>
#include <QList>
#include <QString>

// At most one of debit and credit is above zero.
struct JournalLine {
    LedgerAccount account = LedgerAccount::sales;
    QString description;
    double debit = 0;
    double credit = 0;
};

// One day's balanced journal: debits first, then credits, each in the order of the accounts.
struct Journal {
    QDateTime date; // the start of the day
    QString number; // "POS-yyyyMMdd"
    QList<JournalLine> lines;
    // What the Sales line carries beyond the day's sales, from rounding each line on its own.
    double roundingAdjustment = 0;

    // Each rounded to cents once, at the end.
    double totalDebit() const;
    double totalCredit() const;
    // Debits and credits agree to the cent.
    bool isBalanced() const;

private:
    double total(double JournalLine::*side) const;
};
