#include "environment/appenvironment.h"

#include "access/authservice.h"
#include "records/records.h"
#include "stock/inventoryservice.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcReceipts, "tallyrun.receipts")

namespace {

ReceiptDevices withSystemDefaults(ReceiptDevices devices)
{
    if (!devices.printerDirectory)
        devices.printerDirectory = std::make_unique<SystemPrinterDirectory>();
    if (!devices.rawPrintTransport)
        devices.rawPrintTransport = std::make_unique<CUPSRawPrintTransport>();
    if (!devices.receiptPrinter)
        devices.receiptPrinter = std::make_unique<SystemReceiptPrinter>();
    return devices;
}

} // namespace

AppEnvironment::AppEnvironment(ModelContext& modelContext, std::unique_ptr<AuthServicing> authService,
                               std::unique_ptr<InventoryServicing> inventoryService, ReceiptDevices devices)
    : m_modelContext(modelContext)
    , m_authService(authService ? std::move(authService) : std::make_unique<AuthService>(modelContext))
    , m_inventoryService(inventoryService ? std::move(inventoryService)
                                          : std::make_unique<InventoryService>(modelContext))
    , m_tillService(modelContext)
    , m_accountsService(modelContext)
    , m_loyaltyService(modelContext)
    , m_staffService(modelContext)
    , m_salesService(modelContext, *m_inventoryService, &m_staffService)
    , m_approvalService(modelContext)
    , m_accountingExportService(modelContext)
    , m_devices(withSystemDefaults(std::move(devices)))
    , m_systemReceiptPrinter(dynamic_cast<SystemReceiptPrinter*>(m_devices.receiptPrinter.get()))
    // The drawer reads the settings afresh at every opening, so a change in Settings applies at once.
    , m_cashDrawer([this] { return m_modelContext.fetchFirst<AppSettings>(); }, *m_devices.printerDirectory,
                   *m_devices.rawPrintTransport)
{
}

void AppEnvironment::setPrintPanel(std::unique_ptr<PrintPanel> panel)
{
    m_printPanel = std::move(panel);
    if (m_systemReceiptPrinter)
        m_systemReceiptPrinter->setPrintPanel(m_printPanel.get());
}

ReceiptData AppEnvironment::receiptData(const Sale& sale, const AppSettings& settings)
{
    ReceiptData receipt = ReceiptData::from(sale, settings);
    const Ref<Customer> customer = sale.customer();
    if (!customer)
        return receipt;
    const QList<Ref<Payment>> payments = sale.payments();
    const bool onAccount = std::any_of(payments.begin(), payments.end(), [](const Ref<Payment>& payment) {
        return payment->method() == PaymentMethodType::onAccount;
    });
    if (onAccount) {
        // A receipt is never refused: when the ledger can't be read it prints without the balance.
        try {
            receipt.accountBalance = m_accountsService.balance(customer);
        } catch (const StoreError& error) {
            qCWarning(lcReceipts) << "Receipt" << receipt.invoiceNumber << "without its account balance:"
                                  << error.description();
        }
    }
    // Shown even with the programme off once a sale carries points, so the customer sees where they stand.
    if (settings.loyaltyEnabled() || sale.pointsEarned() != 0 || sale.pointsRedeemed() != 0)
        receipt.pointsBalance = customer->loyaltyPoints();
    return receipt;
}

std::optional<InstalledPrinter> AppEnvironment::chosenReceiptPrinter(const AppSettings& settings)
{
    return m_devices.printerDirectory->printerWithQueue(settings.receiptPrinterQueue());
}

Ref<AppSettings> AppEnvironment::loadOrCreateSettings()
{
    // A failed read is not "no settings": a second record with defaults would restart the receipt
    // numbers at 1.
    return performUnitOfWork(m_modelContext, [this] {
        if (Ref<AppSettings> existing = m_modelContext.fetchFirst<AppSettings>())
            return existing;
        auto settings = std::make_shared<AppSettings>();
        m_modelContext.insert(settings);
        return Ref<AppSettings>(settings);
    });
}
