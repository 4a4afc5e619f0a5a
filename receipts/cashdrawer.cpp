#include "receipts/cashdrawer.h"

#include "clock/clock.h"
#include "receipts/printerdirectory.h"
#include "receipts/rawprinttransport.h"
#include "receipts/receipthardwareerror.h"
#include "records/appsettings.h"

#include <QCoreApplication>
#include <QThread>

QString CashDrawerConnections::raw(CashDrawerConnection connection)
{
    return connection == CashDrawerConnection::receiptPrinter ? QStringLiteral("receiptPrinter")
                                                              : QStringLiteral("simulated");
}

CashDrawerConnection CashDrawerConnections::fromRaw(const QString& raw)
{
    return raw == QLatin1String("receiptPrinter") ? CashDrawerConnection::receiptPrinter
                                                  : CashDrawerConnection::simulated;
}

QString CashDrawerConnections::label(CashDrawerConnection connection)
{
    return connection == CashDrawerConnection::receiptPrinter ? QStringLiteral("Through the receipt printer")
                                                              : QStringLiteral("No drawer connected (simulated)");
}

QString DrawerPins::raw(DrawerPin pin)
{
    return pin == DrawerPin::pin5 ? QStringLiteral("pin5") : QStringLiteral("pin2");
}

DrawerPin DrawerPins::fromRaw(const QString& raw)
{
    return raw == QLatin1String("pin5") ? DrawerPin::pin5 : DrawerPin::pin2;
}

QString DrawerPins::label(DrawerPin pin)
{
    return pin == DrawerPin::pin5 ? QStringLiteral("Pin 5") : QStringLiteral("Pin 2 (most drawers)");
}

void SimulatedCashDrawerService::openDrawer()
{
    m_lastOpenedAt = Clock::now();
}

ConfigurableCashDrawer::ConfigurableCashDrawer(SettingsSource settings, PrinterDirectory& directory,
                                               RawPrintTransport& transport)
    : m_settings(std::move(settings))
    , m_directory(directory)
    , m_transport(transport)
{
}

QByteArray ConfigurableCashDrawer::kickBytes(DrawerPin pin)
{
    // ESC p m t1 t2: pulse the connector pin m for 25 × 2 ms, then rest 250 × 2 ms.
    QByteArray bytes("\x1B" "p" "\x00" "\x19" "\xFA", 5);
    bytes[2] = pin == DrawerPin::pin5 ? 1 : 0;
    return bytes;
}

void ConfigurableCashDrawer::openDrawer()
{
    Q_ASSERT(!QCoreApplication::instance() || QThread::currentThread() == QCoreApplication::instance()->thread());
    const Ref<AppSettings> settings = m_settings();
    if (!settings || !settings->cashDrawerEnabled())
        throw CashDrawerError::notConfigured();
    if (CashDrawerConnections::fromRaw(settings->cashDrawerConnectionRaw()) == CashDrawerConnection::simulated) {
        m_simulated.openDrawer();
        m_lastOpenedAt = Clock::now();
        return;
    }
    const QString queue = settings->receiptPrinterQueue();
    if (queue.isEmpty())
        throw ReceiptHardwareError::noPrinterChosen();
    if (!m_directory.printerWithQueue(queue))
        throw ReceiptHardwareError::printerNotFound(queue);
    m_transport.send(kickBytes(DrawerPins::fromRaw(settings->cashDrawerPinRaw())), queue);
    m_lastOpenedAt = Clock::now();
}
