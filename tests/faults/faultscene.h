#pragma once

#include "environment/appenvironment.h"
#include "records/records.h"
#include "startup/sessionstore.h"
#include "support/faultloop.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <iostream>

// A shop with a signed-in cashier, one product and one customer, and another screen's half-typed
// edit of the product: what every write below runs beside.
struct FaultScene {
    static constexpr double soapPrice = 10;
    static constexpr double typedPrice = 12.5;

    TestStore store;
    ModelContext& context = store.context();
    AppEnvironment environment{context};
    SessionStore session;
    Ref<AppSettings> settings = environment.loadOrCreateSettings();
    Ref<User> cashier = saved([] {
        auto user = std::make_shared<User>();
        user->setName(QStringLiteral("Ama"));
        user->setUsername(QStringLiteral("ama"));
        user->setRole(UserRole::admin);
        return user;
    }());
    Ref<Product> soap = saved([] {
        auto product = std::make_shared<Product>();
        product->setName(QStringLiteral("Soap"));
        product->setSellingPrice(soapPrice);
        product->setCostPrice(4);
        product->setStockQuantity(20);
        return product;
    }());
    Ref<Customer> kofi = saved([] {
        auto customer = std::make_shared<Customer>();
        customer->setName(QStringLiteral("Kofi"));
        customer->setAllowCredit(true);
        customer->setLoyaltyPoints(40);
        return customer;
    }());
    // The Products screen's edit that nobody has saved yet.
    Ref<Product> productDraft = soap->draft<Product>();

    FaultScene()
    {
        session.setSettings(settings);
        session.setCurrentUser(cashier);
        productDraft->setSellingPrice(typedPrice);
    }

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(context, [&] { context.insert(record); });
        return record;
    }

    // Someone else's failed write neither saved nor lost the half-typed price.
    void expectDraftUntouched() const
    {
        EXPECT_EQ(productDraft->sellingPrice(), typedPrice);
        EXPECT_EQ(soap->sellingPrice(), soapPrice);
    }
};

// How one write is tried, and what else must hold after each failure of it.
struct FaultPlan {
    FaultTry attempt;
    std::function<void()> afterFailure = {};
    // What must hold once it went through, after all those failures.
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

// Runs the write's loop once per injected code on a scene of its own, and reports how many
// failures were injected. `prepare` readies the scene and says how to try the write.
template <class Prepare> int runFaultLoops(const char* write, Prepare prepare)
{
    QStringList perCode;
    int total = 0;
    for (int code : injectedFaultCodes()) {
        SCOPED_TRACE(std::string(write) + ", code " + std::to_string(code));
        FaultScene scene;
        const FaultPlan plan = prepare(scene);
        const int failures =
            failEachCallUntilItSucceeds(scene.context, scene.store.path(), code, plan.attempt, [&] {
                scene.expectDraftUntouched();
                if (plan.afterFailure)
                    plan.afterFailure();
            });
        EXPECT_GT(failures, 0) << "no call of the write was failed";
        if (plan.afterSuccess)
            plan.afterSuccess();
        expectMemoryMatchesFile(scene.context, scene.store.path());
        perCode << QString::number(failures);
        total += failures;
    }
    std::cout << "[ faults   ] " << write << ": " << perCode.join(QStringLiteral(" + ")).toStdString()
              << " = " << total << " injected failures (full disk, write error, busy)" << std::endl;
    ::testing::Test::RecordProperty("injectedFailures", total);
    return total;
}
