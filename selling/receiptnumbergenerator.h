#pragma once

#include <QDateTime>
#include <QString>

// Invoice numbers and hold labels. The sequence is the store's running number, never reset by day
// or by till; the date only shows when the number was taken.
class ReceiptNumberGenerator {
public:
    // "INV-20260309-0003": the date in the machine's time zone; past 9999 the number grows wider.
    static QString next(qint64 sequence, const QDateTime& date);
    // "Hold #7", or "Hold #7 - Ama" with a customer's name.
    static QString nextHoldLabel(qint64 sequence, const QString& customerName = {});
};
