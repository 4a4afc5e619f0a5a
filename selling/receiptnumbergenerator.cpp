#include "selling/receiptnumbergenerator.h"

QString ReceiptNumberGenerator::next(qint64 sequence, const QDateTime& date)
{
    return QStringLiteral("INV-") + date.toLocalTime().toString(QStringLiteral("yyyyMMdd")) +
           QString::asprintf("-%04lld", static_cast<long long>(sequence));
}

QString ReceiptNumberGenerator::nextHoldLabel(qint64 sequence, const QString& customerName)
{
    QString label = QStringLiteral("Hold #%1").arg(sequence);
    if (!customerName.isEmpty())
        label += QStringLiteral(" - ") + customerName;
    return label;
}
