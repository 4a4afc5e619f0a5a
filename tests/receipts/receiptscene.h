#pragma once

#include "clock/clock.h"
#include "money/taxcomponent.h"
#include "receipts/receiptdata.h"
#include "records/records.h"
#include "support/printers.h"
#include "support/processoutput.h"
#include "support/salesscene.h"
#include "support/teststore.h"

#include <functional>

#include <gtest/gtest.h>

// A store with its settings, a cashier and a customer, and sales made to measure.
struct ReceiptScene : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    Clock::Override clock{QDateTime(QDate(2026, 3, 9), QTime(14, 5))};
    Ref<AppSettings> settings = store.saved([] {
        auto made = std::make_shared<AppSettings>();
        made->setBusinessName(QStringLiteral("Adwoa's Provisions"));
        made->setAddressLine(QStringLiteral("12 Ring Road, Accra"));
        made->setPhoneNumber(QStringLiteral("030 222 1111"));
        return made;
    }());
    SalesScene scene{context};
    Ref<User> cashier = scene.user("Ama Mensah", UserRole::cashier);
    Ref<Customer> kofi = scene.customer("Kofi Boateng", 120);

    Ref<Sale> sale(const QString& invoice = QStringLiteral("INV-20260309-0042"), Ref<Customer> customer = {})
    {
        auto made = Sale::make(invoice, cashier, customer, {});
        made->setTimestamp(Clock::now());
        return store.saved(made);
    }

    // `adjust` finishes the line before it is saved, as checkout would have written it.
    Ref<SaleItem> item(const Ref<Sale>& onSale, const QString& name, double quantity, double unitPrice,
                       const std::vector<TaxComponent>& taxes = {},
                       const std::function<void(SaleItem&)>& adjust = {})
    {
        auto made = SaleItem::make({}, quantity, unitPrice, 0, 0, 0, false);
        made->setProductNameSnapshot(name);
        double rate = 0;
        for (const TaxComponent& tax : taxes)
            rate += tax.share;
        made->setTaxRateSnapshot(rate);
        made->setTaxComponentsRaw(TaxComponent::encode(taxes));
        made->setSale(onSale);
        if (adjust)
            adjust(*made);
        return store.saved(made);
    }

    Ref<Payment> payment(const Ref<Sale>& onSale, PaymentMethodType method, double amount, double tendered = 0,
                         double change = 0, const QString& methodRaw = {})
    {
        auto made = Payment::make(method, amount, tendered, change, {});
        if (!methodRaw.isEmpty())
            made->setMethodRaw(methodRaw);
        made->setSale(onSale);
        return store.saved(made);
    }
};
