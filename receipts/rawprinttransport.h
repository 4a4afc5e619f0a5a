#pragma once

#include <QByteArray>
#include <QString>

// Bytes that must reach the printer exactly as they are, past its driver.
class RawPrintTransport {
public:
    virtual ~RawPrintTransport() = default;
    virtual void send(const QByteArray& bytes, const QString& queue) = 0;
};

// Through CUPS's spooler as a raw job. Blocks until `lp` has queued it, which is quick; throws
// ReceiptHardwareError::sendFailed with the spooler's own words when it refuses.
class CUPSRawPrintTransport : public RawPrintTransport {
public:
    explicit CUPSRawPrintTransport(QString spooler = QStringLiteral("/usr/bin/lp"));
    void send(const QByteArray& bytes, const QString& queue) override;

private:
    QString m_spooler;
};
