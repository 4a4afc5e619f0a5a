#include "customers/customerdetailmodel.h"
#include "customers/customersviewmodel.h"

#include "support/faultloop.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <iostream>

// The customer detail's writes, failed at each call into SQLite in turn: the plain sentence comes
// back, file and memory stay as they were, the typed fields stay, and the retry goes through once.
TEST(CustomerFormFaults, CreateSaveAndDelete)
{
    TestStore store;
    ModelContext& context = store.context();
    AccountsService accounts(context);
    LoyaltyService loyalty(context);
    SessionStore session;
    const auto failureOf = [](CustomerDetailModel& detail, bool done) {
        return done ? std::nullopt : detail.errorMessage();
    };
    int failures = 0;
    for (int code : injectedFaultCodes()) {
        CustomerDetailModel detail(accounts, loyalty, context, session, CustomersViewModel::addCustomer());
        const QString name = QStringLiteral("Ama %1").arg(code);
        detail.setName(name);
        detail.setAllowCredit(true);
        detail.setCreditLimitText(QStringLiteral("1,000"));
        failures += failEachCallUntilItSucceeds(
            context, store.path(), code, [&] { return failureOf(detail, detail.save()); }, [&] {
                EXPECT_TRUE(detail.isNew());
                EXPECT_EQ(detail.name(), name);
                EXPECT_EQ(detail.creditLimitText(), QStringLiteral("1,000"));
                EXPECT_TRUE(detail.hasUnsavedEdits());
            });
        EXPECT_EQ(context.count<Customer>(Customer::Col::name == name), 1) << "one made, not one per try";
        EXPECT_EQ(detail.customer()->creditLimit(), 1000);

        detail.setPhone(QStringLiteral("024 555 0101"));
        failures += failEachCallUntilItSucceeds(
            context, store.path(), code, [&] { return failureOf(detail, detail.save()); }, [&] {
                EXPECT_EQ(detail.phone(), QStringLiteral("024 555 0101"));
                EXPECT_EQ(detail.customer()->phone(), QString()) << "the record is as saved";
            });
        EXPECT_EQ(detail.customer()->phone(), QStringLiteral("024 555 0101"));

        failures += failEachCallUntilItSucceeds(
            context, store.path(), code, [&] { return failureOf(detail, detail.deleteCustomer()); },
            [&] { EXPECT_FALSE(detail.customer()->isDeleted()); });
    }
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0);
    std::cout << "[ injected ] customer create, save and delete: " << failures << " failures\n";
    EXPECT_GT(failures, 0);
}
