#include "customers/adjustpointsmodel.h"
#include "customers/customerdetailmodel.h"
#include "customers/customersviewmodel.h"
#include "customers/receiveaccountpaymentmodel.h"

#include "accountbuilders.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
class CustomerScreensTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    AccountsService accounts{context};
    LoyaltyService loyalty{context};
    SessionStore session;
    int done = 0;
};

TEST_F(CustomerScreensTest, ListSearchesEmailInAnyCaseAndShowsWhoOwes)
{
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama Mensah")});
    ama->setEmail(QStringLiteral("AMA@EXAMPLE.COM"));
    const Ref<Customer> kofi = addCustomer(context, {.name = QStringLiteral("Kofi")});
    addSale(context, {.customer = kofi, .tenders = {{PaymentMethodType::onAccount, 20}}});

    CustomersViewModel list(accounts, context, session);
    QList<CustomerRow> rows = list.page();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].owesText, std::nullopt);
    EXPECT_EQ(rows[1].owesText, QStringLiteral("Owes ₵20.00"));
    rows = list.page(ama);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].owesText, QStringLiteral("Owes ₵20.00")) << "worked out for a later page too";

    list.setSearchText(QStringLiteral("example.com"));
    ASSERT_EQ(list.page().size(), 1);
    EXPECT_EQ(list.page()[0].customer, ama);
    list.setSearchText(QStringLiteral("100%"));
    EXPECT_TRUE(list.page().isEmpty()) << "a % in the search is a character, not a wildcard";
    EXPECT_TRUE(list.hasCustomers());
}

// Three customers of one name must be told apart in the list by what is under each name.
TEST_F(CustomerScreensTest, ListLineUnderTheNameIsThePhoneElseTheEmailBesideWhatIsOwed)
{
    const struct {
        const char* fault;
        const char* phone;
        const char* email;
        double owed;
        const char* detail;
    } cases[] = {
        {"phone not shown", "024 555 0101", "abdul@example.com", 0, "024 555 0101"},
        {"e-mail not used without a phone", "", "abdul@example.com", 0, "abdul@example.com"},
        {"a blank phone taken for one", "  ", "abdul@example.com", 0, "abdul@example.com"},
        {"what is owed lost beside the phone", "024 555 0102", "", 35, "024 555 0102 · Owes ₵35.00"},
        {"a dangling separator with no contact", "", "", 35, "Owes ₵35.00"},
        {"anything shown for nothing", "", "", 0, ""},
    };
    for (const auto& c : cases) {
        const Ref<Customer> abdul = addCustomer(context, {.name = QStringLiteral("Abdul Abubakar")});
        abdul->setPhone(QString::fromUtf8(c.phone));
        abdul->setEmail(QString::fromUtf8(c.email));
        context.save();
        if (c.owed > 0)
            addSale(context, {.customer = abdul, .tenders = {{PaymentMethodType::onAccount, c.owed}}});
        for (const CustomerRow& row : CustomersViewModel(accounts, context, session).page()) {
            if (row.customer == abdul) {
                EXPECT_EQ(row.detail(), QString::fromUtf8(c.detail)) << c.fault;
            }
        }
    }
}

TEST_F(CustomerScreensTest, DeleteWarnsAboutTheBalanceAndSalesThenUnlinksThem)
{
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama")});
    const Ref<Sale> sale =
        addSale(context, {.customer = ama, .tenders = {{PaymentMethodType::onAccount, 20}}});
    addSale(context, {.customer = ama, .tenders = {{PaymentMethodType::cash, 5}}});
    CustomerDetailModel detail(accounts, loyalty, context, session, ama);
    EXPECT_EQ(detail.deleteWarnings(),
              (QStringList{
                  "Ama still owes ₵20.00. Deleting removes the account — record their payment first if you "
                  "can.",
                  "2 past sale(s) will keep their own record — they'll just no longer be linked to this "
                  "customer.",
                  "This cannot be undone."}));

    EXPECT_TRUE(detail.deleteCustomer());
    EXPECT_EQ(sale->customer(), nullptr);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 2);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0);
}

// The age of what is owed, beside the balance, in the buckets of the aged-balances report.
TEST_F(CustomerScreensTest, TheAccountSaysHowOldWhatIsOwedIs)
{
    const QDateTime today = QDateTime::currentDateTime();
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama")});
    CustomerDetailModel detail(accounts, loyalty, context, session, ama);
    EXPECT_EQ(detail.ageText(detail.accountHistory()), QString()) << "nothing owed, nothing to age";
    addSale(context, {.customer = ama, .at = today.addDays(-100), .tenders = {{PaymentMethodType::onAccount, 35}}});
    addSale(context, {.customer = ama, .at = today.addDays(-2), .tenders = {{PaymentMethodType::onAccount, 20}}});
    EXPECT_EQ(detail.ageText(detail.accountHistory()),
              "0–30 days ₵20.00 · 31–60 days ₵0.00 · 61–90 days ₵0.00 · Over 90 days ₵35.00");
}

// "1,000" read as money is checked by the fault loop's new customer.
TEST_F(CustomerScreensTest, ACreditLimitThatIsNoAmountIsRefusedAndTheSavedOneKept)
{
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama"), .creditLimit = 200});
    CustomerDetailModel detail(accounts, loyalty, context, session, ama);
    detail.setCreditLimitText(QStringLiteral("200.00"));
    EXPECT_FALSE(detail.hasUnsavedEdits()) << "the saved amount written another way is no edit";
    detail.setCreditLimitText(QString());
    EXPECT_FALSE(detail.save());
    EXPECT_EQ(detail.creditLimitProblem(), QStringLiteral("Enter an amount such as 1,250.00."));
    EXPECT_TRUE(detail.hasUnsavedEdits());
    EXPECT_EQ(ama->creditLimit(), 200);
}

TEST_F(CustomerScreensTest, ReceivePaymentReadsMoneyAsTypedAndPutsOnlyCashInTheTill)
{
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama")});
    addSale(context, {.customer = ama, .tenders = {{PaymentMethodType::onAccount, 50}}});
    const Ref<TillShift> shift = addShift(context);
    session.setCurrentTillShift(shift);

    ReceiveAccountPaymentModel cash(accounts, session, ama, 50, [this] { ++done; });
    EXPECT_EQ(cash.owesLine(), QStringLiteral("Ama owes ₵50.00."));
    EXPECT_EQ(cash.tillNote(),
              QStringLiteral("The cash goes into the open till and is included in Expected Cash."));
    cash.setAmountText(QStringLiteral("₵12.50"));
    EXPECT_TRUE(cash.record());
    EXPECT_EQ(done, 1);

    ReceiveAccountPaymentModel card(accounts, session, ama, 37.5, [this] { ++done; });
    card.setMethod(PaymentMethodType::card);
    EXPECT_EQ(card.tillNote(), std::nullopt);
    card.fillFullBalance();
    EXPECT_EQ(card.amountText(), QStringLiteral("37.50"));
    EXPECT_TRUE(card.record());

    EXPECT_EQ(accounts.cashReceived(shift), 12.5);
    EXPECT_EQ(accounts.balance(ama), 0);

    session.setCurrentTillShift(nullptr);
    EXPECT_EQ(cash.tillNote(),
              QStringLiteral("No till is open, so this cash won't be counted in a till shift."));
}

TEST_F(CustomerScreensTest, AdjustPointsSignsByDirectionAndShowsTheNewBalance)
{
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama"), .points = 10});
    AdjustPointsModel sheet(loyalty, session, ama, [this] { ++done; });
    EXPECT_EQ(sheet.balanceLine(), QStringLiteral("Ama has 10 points."));
    sheet.setDirection(AdjustPointsModel::Direction::remove);
    sheet.setPointsText(QStringLiteral(" 4 "));
    EXPECT_EQ(sheet.newBalanceText(), QStringLiteral("New balance: 6 points"));
    sheet.setPointsText(QStringLiteral("2.5"));
    EXPECT_EQ(sheet.newBalanceText(), std::nullopt);
    EXPECT_FALSE(sheet.save()) << "whole points only";

    sheet.setPointsText(QStringLiteral("4"));
    sheet.setReason(QStringLiteral("correction"));
    EXPECT_TRUE(sheet.save());
    EXPECT_EQ(done, 1);
    EXPECT_EQ(ama->loyaltyPoints(), 6);
}
} // namespace
