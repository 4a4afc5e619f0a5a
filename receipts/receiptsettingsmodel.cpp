#include "receipts/receiptsettingsmodel.h"

#include "clock/clock.h"
#include "receipts/logoimage.h"
#include "receipts/receiptprinting.h"
#include "records/appsettings.h"

#include <QFile>

ReceiptSettingsModel::ReceiptSettingsModel(ModelContext& context, Ref<AppSettings> settings,
                                           PrinterDirectory& directory, ReceiptPrinting& printing,
                                           CashDrawerOpening& drawer, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_settings(std::move(settings))
    , m_directory(directory)
    , m_printing(printing)
    , m_drawer(drawer)
{
    refreshPrinters();
}

template <class Change> void ReceiptSettingsModel::change(Change apply)
{
    saveOrUndo(m_context, [&] { apply(*m_settings); });
    Q_EMIT changed();
}

void ReceiptSettingsModel::refreshPrinters()
{
    m_printers = m_directory.installedPrinters();
    // A test of a printer that may since have gone says nothing about now.
    m_printerTestMessage.reset();
    Q_EMIT changed();
}

QList<ReceiptSettingsModel::PrinterChoice> ReceiptSettingsModel::printerChoices() const
{
    QList<PrinterChoice> choices{{QStringLiteral("Ask each time (print dialog)"), std::nullopt}};
    for (const InstalledPrinter& printer : m_printers)
        choices.append({printer.name, printer});
    if (isChosenPrinterMissing()) {
        const QString& queue = m_settings->receiptPrinterQueue();
        const QString& name = m_settings->receiptPrinterName().isEmpty() ? queue : m_settings->receiptPrinterName();
        choices.append({name + QStringLiteral(" — not connected"), InstalledPrinter{queue, name}});
    }
    return choices;
}

qsizetype ReceiptSettingsModel::chosenPrinterIndex() const
{
    const QList<PrinterChoice> choices = printerChoices();
    for (qsizetype index = 1; index < choices.size(); ++index) {
        if (choices[index].printer->queue == m_settings->receiptPrinterQueue())
            return index;
    }
    return 0;
}

bool ReceiptSettingsModel::isChosenPrinterMissing() const
{
    const QString& queue = m_settings->receiptPrinterQueue();
    return !queue.isEmpty()
        && std::none_of(m_printers.begin(), m_printers.end(),
                        [&queue](const InstalledPrinter& printer) { return printer.queue == queue; });
}

void ReceiptSettingsModel::choosePrinter(const std::optional<InstalledPrinter>& printer)
{
    m_printerTestMessage.reset();
    change([&](AppSettings& settings) {
        settings.setReceiptPrinterQueue(printer ? printer->queue : QString());
        settings.setReceiptPrinterName(printer ? printer->name : QString());
    });
}

void ReceiptSettingsModel::setReceiptFooter(const QString& footer)
{
    change([&](AppSettings& settings) { settings.setReceiptFooter(footer); });
}

void ReceiptSettingsModel::setUseThermalWidth(bool on)
{
    change([&](AppSettings& settings) { settings.setUseThermalReceiptWidth(on); });
}

void ReceiptSettingsModel::setPrintAutomatically(bool on)
{
    change([&](AppSettings& settings) { settings.setPrintReceiptAutomatically(on); });
}

void ReceiptSettingsModel::setCountryCallingCode(const QString& code)
{
    change([&](AppSettings& settings) { settings.setCountryCallingCode(code.trimmed()); });
}

void ReceiptSettingsModel::chooseLogo(const QString& path)
{
    QFile file(path);
    QByteArray png;
    try {
        if (!file.open(QIODevice::ReadOnly))
            throw LogoImageError();
        png = LogoImage::normalize(file.readAll());
    } catch (const LogoImageError& error) {
        setErrorMessage(error.description());
        Q_EMIT changed();
        return;
    }
    change([&](AppSettings& settings) { settings.setLogoPNG(png); });
}

void ReceiptSettingsModel::removeLogo()
{
    change([](AppSettings& settings) { settings.setLogoPNG(std::nullopt); });
}

void ReceiptSettingsModel::setCashDrawerEnabled(bool on)
{
    change([&](AppSettings& settings) { settings.setCashDrawerEnabled(on); });
}

void ReceiptSettingsModel::setDrawerConnection(CashDrawerConnection connection)
{
    change([&](AppSettings& settings) { settings.setCashDrawerConnectionRaw(CashDrawerConnections::raw(connection)); });
}

void ReceiptSettingsModel::setDrawerPin(DrawerPin pin)
{
    change([&](AppSettings& settings) { settings.setCashDrawerPinRaw(DrawerPins::raw(pin)); });
}

void ReceiptSettingsModel::setOpenOnCashSale(bool on)
{
    change([&](AppSettings& settings) { settings.setCashDrawerOpenOnCashSale(on); });
}

void ReceiptSettingsModel::testPrint(const QString& cashierName)
{
    const std::optional<InstalledPrinter> printer = m_directory.printerWithQueue(m_settings->receiptPrinterQueue());
    m_printing.printReceipt(testReceipt(*m_settings, cashierName), m_settings->useThermalReceiptWidth(), printer);
    m_printerTestMessage = printer ? QStringLiteral("Test receipt sent to %1.").arg(printer->name)
                                   : QStringLiteral("Choose a printer in the dialog to test it.");
    Q_EMIT changed();
}

void ReceiptSettingsModel::testDrawer()
{
    const std::optional<QString> failure = storeFailure([this] { m_drawer.openDrawer(); });
    m_drawerTestFailed = failure.has_value();
    if (failure) {
        m_drawerTestMessage = failure;
    } else if (CashDrawerConnections::fromRaw(m_settings->cashDrawerConnectionRaw())
               == CashDrawerConnection::receiptPrinter) {
        m_drawerTestMessage = QStringLiteral("Open command sent. The drawer should have popped open.");
    } else {
        m_drawerTestMessage = QStringLiteral(
            "Simulated drawer \"opened\" — choose Through the receipt printer to open a real drawer.");
    }
    Q_EMIT changed();
}

ReceiptData ReceiptSettingsModel::testReceipt(const AppSettings& settings, const QString& cashierName)
{
    ReceiptData receipt;
    receipt.businessName = QStringLiteral("TEST PRINT");
    receipt.invoiceNumber = QStringLiteral("TEST");
    receipt.timestamp = Clock::now();
    receipt.cashierName = cashierName.isEmpty() ? QStringLiteral("—") : cashierName;
    receipt.lines = {{QStringLiteral("Test item"), 1, 0, 0, QString()}};
    receipt.footer = QStringLiteral("If you can read this, the receipt printer works.");
    receipt.currencySymbol = settings.currencySymbol();
    receipt.logoPNG = settings.logoPNG();
    return receipt;
}

ReceiptData ReceiptSettingsModel::sampleReceipt() const
{
    ReceiptData receipt;
    receipt.businessName = m_settings->businessName();
    receipt.addressLine = m_settings->addressLine();
    receipt.phoneNumber = m_settings->phoneNumber();
    receipt.invoiceNumber = QStringLiteral("INV-%1-0001").arg(Clock::now().toString(QStringLiteral("yyyyMMdd")));
    receipt.timestamp = Clock::now();
    receipt.cashierName = QStringLiteral("Ama");
    receipt.lines = {{QStringLiteral("Sample item"), 2, 12.5, 25, QString()},
                     {QStringLiteral("Sold by weight"), 1.5, 8, 12, QStringLiteral("kg")}};
    receipt.subtotal = 37;
    receipt.taxTotal = 0;
    receipt.total = 37;
    receipt.payments = {{QStringLiteral("Cash"), 37, 50, 13}};
    receipt.footer = m_settings->receiptFooter();
    receipt.currencySymbol = m_settings->currencySymbol();
    receipt.logoPNG = m_settings->logoPNG();
    return receipt;
}
