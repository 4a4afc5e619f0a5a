#pragma once

// The scene every write of the fault loop runs in, and the loop itself: each failure must show a
// plain sentence and leave file, memory and the forms being typed into elsewhere as they were, and
// the write must then go through, once, when tried again.

#include "environment/appenvironment.h"
#include "records/records.h"
#include "refusal/refusal.h"
#include "startup/sessionstore.h"
#include "stock/productsviewmodel.h"
#include "stock/suppliersviewmodel.h"
#include "support/faultloop.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <iostream>

inline const QString typedPhone = QStringLiteral("024 555 0101");

// A shop with a signed-in admin, a product, a supplier and a customer, and half-typed edits on the
// Products and Suppliers forms: what every write below runs beside.
struct FaultScene {
    TestStore store;
    ModelContext& context = store.context();
    AppEnvironment environment{context};
    SessionStore session;
    Ref<AppSettings> settings = environment.loadOrCreateSettings();
    Ref<User> cashier = store.saved(named<User>("Ama", [](User& user) {
        user.setUsername(QStringLiteral("ama"));
        user.setRole(UserRole::admin);
    }));
    Ref<Product> soap = store.saved(named<Product>("Soap", [](Product& product) {
        product.setSellingPrice(10);
        product.setCostPrice(4);
        product.setStockQuantity(20);
    }));
    Ref<Supplier> acme = store.saved(named<Supplier>("Acme"));
    Ref<Customer> kofi = store.saved(named<Customer>("Kofi", [](Customer& customer) {
        customer.setAllowCredit(true);
        customer.setLoyaltyPoints(40);
    }));
    ProductsViewModel products{context, session};
    SuppliersViewModel suppliers{context};

    FaultScene()
    {
        session.setSettings(settings);
        session.setCurrentUser(cashier);
        products.select(soap);
        products.enter(ProductsViewModel::Entry::sellingPrice, QStringLiteral("12.50"));
        suppliers.select(acme);
        suppliers.editedSupplier()->setPhone(typedPhone);
    }

    template <class T> static Ref<T> named(const char* name, const std::function<void(T&)>& fill = {})
    {
        auto record = std::make_shared<T>();
        record->setName(QString::fromUtf8(name));
        if (fill)
            fill(*record);
        return record;
    }
    template <class T> Ref<T> saved(Ref<T> record) { return store.saved(std::move(record)); }
    qint64 onDisk(const char* table) const { return countRowsOnDisk(store.path(), QString::fromUtf8(table)); }

    // Other screens save many times a minute beside a form being typed into: their failures
    // neither save nor lose what it holds, and leave no write lock held while a person types.
    void expectFormsUntouched() const
    {
        EXPECT_EQ(products.editedProduct()->sellingPrice(), 12.5);
        EXPECT_TRUE(products.hasUnsavedEdits());
        EXPECT_EQ(soap->sellingPrice(), 10);
        EXPECT_EQ(suppliers.editedSupplier()->phone(), typedPhone);
        EXPECT_EQ(acme->phone(), QString());
        EXPECT_FALSE(context.connection().inTransaction());
    }
};

// How one write is tried, what must hold after each failure of it, and once it went through.
struct FaultPlan {
    FaultTry attempt;
    std::function<void()> afterFailure = {};
    std::function<void()> afterSuccess = {};
};

// One try through a view model: nothing when it went through, else the message it shows.
template <class Model, class Action> FaultTry through(Model& model, Action action)
{
    return [&model, action]() -> std::optional<QString> {
        if (action())
            return std::nullopt;
        return model.errorMessage().value_or(QStringLiteral("(refused without a message)"));
    };
}

// One try of a service call: nothing when it went through, else the refusal it showed.
template <class Action> FaultTry refused(Action action)
{
    return [action]() -> std::optional<QString> {
        try {
            action();
            return std::nullopt;
        } catch (const Refusal& refusal) {
            return refusal.description();
        }
    };
}

// Runs the write's loop once per injected code, on a scene of its own.
inline void runFaultLoops(const char* write, const std::function<FaultPlan(FaultScene&)>& prepare)
{
    QStringList perCode;
    for (int code : injectedFaultCodes()) {
        SCOPED_TRACE("code " + std::to_string(code));
        FaultScene scene;
        const FaultPlan plan = prepare(scene);
        if (::testing::Test::HasFatalFailure())
            return;
        const int failures =
            failEachCallUntilItSucceeds(scene.context, scene.store.path(), code, plan.attempt, [&] {
                scene.expectFormsUntouched();
                if (plan.afterFailure)
                    plan.afterFailure();
            });
        EXPECT_GT(failures, 0) << "no call of the write was failed";
        if (plan.afterSuccess)
            plan.afterSuccess();
        scene.expectFormsUntouched();
        expectMemoryMatchesFile(scene.context, scene.store.path());
        perCode << QString::number(failures);
    }
    std::cout << "[ faults   ] " << write << ": " << perCode.join(QStringLiteral(" + ")).toStdString()
              << " injected failures (full disk, write error, busy)" << std::endl;
}
