#pragma once

#include "environment/appenvironment.h"
#include "pos/posviewmodel.h"
#include "startup/sessionstore.h"
#include "support/receiptdevices.h"
#include "support/salesscene.h"

#include <gtest/gtest.h>

// A counter with an open till, a signed-in cashier and an admin who can approve, the receipt
// printer "Receipt" plugged in, and the workspace on it.
struct POSTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    Clock::Override clock{QDateTime(QDate(2026, 3, 9), QTime(10, 30))};
    SalesScene scene{context};
    ListedPrinters* printers = nullptr;
    RecordedTransport* transport = nullptr;
    RecordedReceiptPrinter* printer = nullptr;
    std::unique_ptr<AppEnvironment> environment = makeEnvironment();
    SessionStore session;
    Ref<AppSettings> settings = environment->loadOrCreateSettings();
    Ref<User> cashier = scene.user("Ama", UserRole::cashier);
    Ref<User> admin = scene.user("Kwame", UserRole::admin, "4321");
    std::unique_ptr<POSViewModel> pos;

    POSTest()
    {
        session.setSettings(settings);
        session.setCurrentUser(cashier);
        session.setCurrentTillShift(environment->tillService().openShift(cashier, 100));
        pos = std::make_unique<POSViewModel>(*environment, session);
    }

    std::unique_ptr<AppEnvironment> makeEnvironment()
    {
        ReceiptDevices devices;
        auto listed = std::make_unique<ListedPrinters>();
        listed->printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
        auto sent = std::make_unique<RecordedTransport>();
        auto jamming = std::make_unique<RecordedReceiptPrinter>();
        printers = listed.get();
        transport = sent.get();
        printer = jamming.get();
        devices.printerDirectory = std::move(listed);
        devices.rawPrintTransport = std::move(sent);
        devices.receiptPrinter = std::move(jamming);
        return std::make_unique<AppEnvironment>(context, nullptr, nullptr, std::move(devices));
    }

    template <class Change> void changeSettings(Change change)
    {
        performUnitOfWork(context, [&] { change(*settings); });
    }

    // The product with the code given, put in its own unit of work.
    Ref<Product> coded(const char* name, const char* sku, const char* barcode, double price = 10)
    {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(name));
        made->setSku(QString::fromUtf8(sku));
        made->setBarcode(QString::fromUtf8(barcode));
        made->setSellingPrice(price);
        made->setStockQuantity(50);
        return scene.saved(made);
    }

    // Runs the approval the workspace raised as the dialog would with the admin's PIN.
    void approve(const QString& reason = {})
    {
        std::optional<ApprovalRequest> request = pos->takeApprovalRequest();
        ASSERT_TRUE(request.has_value());
        request->perform(request->needsPIN ? admin : nullptr, reason);
    }
};
