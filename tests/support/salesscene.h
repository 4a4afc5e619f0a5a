#pragma once

#include "clock/clock.h"
#include "records/records.h"
#include "selling/cart.h"
#include "selling/paymentinput.h"
#include "selling/salesservice.h"
#include "stock/inventoryservice.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QDateTime>

#include <gtest/gtest.h>

// Records for a shop's sales, saved one unit of work each, and the tenders that pay a cart as
// checkout prices it, so that refunds, voids and the history see what a real sale leaves. Header
// only: it needs the selling library, which each test executable that uses it links.
struct SalesScene {
    explicit SalesScene(ModelContext& context)
        : context(context)
    {
    }

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(context, [&] { context.insert(record); });
        return record;
    }

    struct NewProduct {
        const char* name = "Soap";
        double price = 10;
        double stock = 100;
        double taxRate = 0;
        ProductType type = ProductType::inventory;
        SellingUnit unit = SellingUnit::each;
    };
    Ref<Product> product(const NewProduct& fields)
    {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(fields.name));
        made->setSellingPrice(fields.price);
        made->setCostPrice(fields.price / 2);
        made->setStockQuantity(fields.stock);
        made->setTaxRate(fields.taxRate);
        made->setProductType(fields.type);
        made->setSellingUnit(fields.unit);
        return saved(made);
    }

    Ref<Customer> customer(const char* name, qint64 points = 0)
    {
        auto made = std::make_shared<Customer>();
        made->setName(QString::fromUtf8(name));
        made->setAllowCredit(true);
        made->setLoyaltyPoints(points);
        return saved(made);
    }

    Ref<User> user(const char* name, UserRole role, const char* pin = nullptr)
    {
        auto made = std::make_shared<User>();
        made->setName(QString::fromUtf8(name));
        made->setUsername(QString::fromUtf8(name).toLower());
        made->setRole(role);
        if (pin)
            made->setPin(QString::fromUtf8(pin));
        return saved(made);
    }

    // Paid in full by one tender of `method`, points at the value checkout gives them.
    static QList<PaymentInput> paidBy(const Cart& cart, const AppSettings& settings,
                                      PaymentMethodType method = PaymentMethodType::cash)
    {
        Cart priced = cart;
        priced.setValuePerPoint(settings.loyaltyValuePerPoint());
        const double total = priced.calculation(settings.taxInclusivePricing()).total;
        return {{method, total, total, {}}};
    }

    ModelContext& context;
};

// A fresh store with the sales service on it, its settings and a cashier, the clock standing at
// 10:30 on 9 March 2026 until a test moves it.
struct SalesTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    QDateTime now{QDate(2026, 3, 9), QTime(10, 30)};
    Clock::Override clock{[this] { return now; }};
    SalesScene scene{context};
    InventoryService inventory{context};
    SalesService sales{context, inventory};
    Ref<AppSettings> settings = scene.saved(std::make_shared<AppSettings>());
    Ref<User> cashier = scene.user("Ama", UserRole::cashier);
};
