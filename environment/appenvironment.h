#pragma once

#include "access/approvalservice.h"
#include "access/attemptthrottle.h"
#include "access/authservicing.h"
#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "receipts/cashdrawer.h"
#include "receipts/printerdirectory.h"
#include "receipts/rawprinttransport.h"
#include "receipts/receiptdata.h"
#include "receipts/receiptprinting.h"
#include "records/appsettings.h"
#include "reports/accountingexportservice.h"
#include "selling/salesservice.h"
#include "staff/staffservice.h"
#include "stock/inventoryservicing.h"
#include "store/modelcontext.h"
#include "till/tillservice.h"

#include <memory>

// The machine's printers, the spooler and the receipt printer; a test hands in doubles for any of
// them, and the real one is built for each left out.
struct ReceiptDevices {
    std::unique_ptr<PrinterDirectory> printerDirectory;
    std::unique_ptr<RawPrintTransport> rawPrintTransport;
    std::unique_ptr<ReceiptPrinting> receiptPrinter;
};

// The program's services, built once on the one model context and shared by every screen.
class AppEnvironment {
public:
    // A service left out is built on the context; one handed in (a test double) is used instead.
    explicit AppEnvironment(ModelContext& modelContext, std::unique_ptr<AuthServicing> authService = nullptr,
                            std::unique_ptr<InventoryServicing> inventoryService = nullptr,
                            ReceiptDevices devices = {});
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;

    ModelContext& modelContext() const { return m_modelContext; }
    AuthServicing& authService() { return *m_authService; }
    TillService& tillService() { return m_tillService; }
    InventoryServicing& inventoryService() { return *m_inventoryService; }
    AccountsService& accountsService() { return m_accountsService; }
    LoyaltyService& loyaltyService() { return m_loyaltyService; }
    SalesService& salesService() { return m_salesService; }
    ApprovalService& approvalService() { return m_approvalService; }
    // Wrong passwords and PINs, at sign-in and in approvals alike.
    AttemptThrottle& attemptThrottle() { return m_attemptThrottle; }
    AccountingExportService& accountingExportService() { return m_accountingExportService; }
    StaffService& staffService() { return m_staffService; }
    PrinterDirectory& printerDirectory() { return *m_devices.printerDirectory; }
    ReceiptPrinting& receiptPrinter() { return *m_devices.receiptPrinter; }
    CashDrawerOpening& cashDrawer() { return m_cashDrawer; }
    // The print dialog the screens offer when no receipt printer is chosen or it is gone.
    void setPrintPanel(std::unique_ptr<PrintPanel> panel);

    // A sale's receipt with the customer's account and points balances as they stand now.
    ReceiptData receiptData(const Sale& sale, const AppSettings& settings);
    std::optional<InstalledPrinter> chosenReceiptPrinter(const AppSettings& settings);

    // The store's one settings record, made with its defaults when there is none, as a unit of
    // work (or part of the caller's). Throws StoreError when the store can't be read or the new
    // record can't be saved: the caller reports it and stops.
    Ref<AppSettings> loadOrCreateSettings();

private:
    ModelContext& m_modelContext;
    std::unique_ptr<AuthServicing> m_authService;
    std::unique_ptr<InventoryServicing> m_inventoryService;
    TillService m_tillService;
    AccountsService m_accountsService;
    LoyaltyService m_loyaltyService;
    StaffService m_staffService;
    SalesService m_salesService; // declared after the inventory and staff services it stands on
    ApprovalService m_approvalService;
    AttemptThrottle m_attemptThrottle;
    AccountingExportService m_accountingExportService;
    ReceiptDevices m_devices;
    SystemReceiptPrinter* m_systemReceiptPrinter = nullptr; // the receipt printer, unless a double
    std::unique_ptr<PrintPanel> m_printPanel;
    ConfigurableCashDrawer m_cashDrawer;
};
