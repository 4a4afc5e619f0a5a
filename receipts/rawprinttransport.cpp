#include "receipts/rawprinttransport.h"

#include "receipts/receipthardwareerror.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QUuid>

CUPSRawPrintTransport::CUPSRawPrintTransport(QString spooler)
    : m_spooler(std::move(spooler))
{
}

void CUPSRawPrintTransport::send(const QByteArray& bytes, const QString& queue)
{
    const QString path = QDir(QDir::tempPath())
                             .filePath(QStringLiteral("tallyrun-raw-%1.bin")
                                           .arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()));
    const auto removeFile = qScopeGuard([&path] { QFile::remove(path); });
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw ReceiptHardwareError::sendFailed(file.errorString());
    file.close();

    QProcess spooler;
    // The spooler's messages are shown as they come, so they must not be in some other language.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    spooler.setProcessEnvironment(environment);
    spooler.setStandardOutputFile(QProcess::nullDevice());
    spooler.start(m_spooler, {QStringLiteral("-d"), queue, QStringLiteral("-o"), QStringLiteral("raw"),
                              QStringLiteral("-t"), QStringLiteral("Brindle"), path});
    if (!spooler.waitForStarted())
        throw ReceiptHardwareError::sendFailed(spooler.errorString());
    spooler.waitForFinished(-1);
    if (spooler.exitStatus() == QProcess::NormalExit && spooler.exitCode() == 0)
        return;
    const QString detail = QString::fromUtf8(spooler.readAllStandardError()).trimmed();
    throw ReceiptHardwareError::sendFailed(
        detail.isEmpty() ? QStringLiteral("lp exited with status %1").arg(spooler.exitCode()) : detail);
}
