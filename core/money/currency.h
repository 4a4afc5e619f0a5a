#pragma once

#include <QString>

class Currency {
public:
    // Used where money is shown whatever symbol the store has chosen: report tables, audit details,
    // refund and void summaries, supplier e-mails.
    inline static const QString fixedSign = QStringLiteral("₵");

    // -₵1,234.50: en_US grouping, two decimals. The code is accepted for callers that have one and
    // is not shown.
    static QString format(double amount, const QString& symbol, const QString& code = {});
    // 0.15 gives "15%", 0.025 gives "2.5%".
    static QString percentText(double rate);
};
