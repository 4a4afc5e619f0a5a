#pragma once

#include "clock/clock.h"
#include "money/taxcomponent.h"
#include "receipts/receiptdata.h"
#include "records/records.h"
#include "support/printers.h"
#include "support/teststore.h"
#include "store/unitofwork.h"

#include <QProcess>

#include <functional>

#include <gtest/gtest.h>

// A store with its settings, a cashier and a customer, and sales made to measure.
struct ReceiptScene : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    Clock::Override clock{QDateTime(QDate(2026, 3, 9), QTime(14, 5))};
    Ref<AppSettings> settings = saved([] {
        auto made = std::make_shared<AppSettings>();
        made->setBusinessName(QStringLiteral("Adwoa's Provisions"));
        made->setAddressLine(QStringLiteral("12 Ring Road, Accra"));
        made->setPhoneNumber(QStringLiteral("030 222 1111"));
        return made;
    }());
    Ref<User> cashier = saved([] {
        auto made = std::make_shared<User>();
        made->setName(QStringLiteral("Ama Mensah"));
        return made;
    }());
    Ref<Customer> kofi = saved([] {
        auto made = std::make_shared<Customer>();
        made->setName(QStringLiteral("Kofi Boateng"));
        made->setAllowCredit(true);
        made->setLoyaltyPoints(120);
        return made;
    }());

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(context, [&] { context.insert(record); });
        return record;
    }

    Ref<Sale> sale(const QString& invoice = QStringLiteral("INV-20260309-0042"), Ref<Customer> customer = {})
    {
        auto made = Sale::make(invoice, cashier, customer, {});
        made->setTimestamp(Clock::now());
        return saved(made);
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
        return saved(made);
    }

    Ref<Payment> payment(const Ref<Sale>& onSale, PaymentMethodType method, double amount, double tendered = 0,
                         double change = 0, const QString& methodRaw = {})
    {
        auto made = Payment::make(method, amount, tendered, change, {});
        if (!methodRaw.isEmpty())
            made->setMethodRaw(methodRaw);
        made->setSale(onSale);
        return saved(made);
    }
};

// What a program on the machine printed; the test fails when it couldn't run.
inline QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << " failed: " << process.readAllStandardError().toStdString();
        return {};
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}
