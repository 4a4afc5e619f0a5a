#pragma once

#include "clock/clock.h"
#include "records/records.h"
#include "selling/cart.h"
#include "selling/paymentinput.h"
#include "selling/salesservice.h"
#include "store/unitofwork.h"

#include <QDateTime>

// Records for a shop's sales, saved one unit of work each, and sales rung up through checkout as
// the counter rings them, so that refunds, voids and the history see what a real sale leaves.
// Header only: it needs the selling library, which each test executable that uses it links.
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

    Ref<User> user(const char* name, UserRole role)
    {
        auto made = std::make_shared<User>();
        made->setName(QString::fromUtf8(name));
        made->setUsername(QString::fromUtf8(name).toLower());
        made->setRole(role);
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
