#include "customers/accountsservice.h"

#include "accountbuilders.h"
#include "money/currency.h"
#include "records/customerpayment.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
constexpr auto onAccount = PaymentMethodType::onAccount;

class AccountsServiceTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    AccountsService accounts{context};
};

TEST_F(AccountsServiceTest, LedgerRunsInDateOrderAndAVoidedSaleDropsOut)
{
    const Ref<Customer> kofi = addCustomer(context);
    const Ref<Customer> other = addCustomer(context, {.name = QStringLiteral("Other")});
    // Written out of date order, so the ledger must sort; the cash part of the mixed sale isn't charged.
    const Ref<Sale> sale = addSale(context, {.invoice = QStringLiteral("INV-1"),
                                             .customer = kofi,
                                             .at = localAt(2026, 3, 1),
                                             .tenders = {{onAccount, 100}, {PaymentMethodType::cash, 25}}});
    {
        // At the very instant of the refund below, which must still come first.
        Clock::Override today(localAt(2026, 3, 2));
        accounts.receivePayment(kofi, 50, PaymentMethodType::mobileMoney, QStringLiteral("MM77"), {}, nullptr,
                                nullptr);
    }
    addSale(context, {.invoice = QStringLiteral("INV-2"),
                      .customer = kofi,
                      .at = localAt(2026, 3, 2),
                      .tenders = {{onAccount, -30}}});
    addSale(context, {.invoice = QStringLiteral("INV-3"), .customer = other, .tenders = {{onAccount, 999}}});

    QStringList ledger;
    for (const AccountEntry& entry : accounts.ledger(kofi))
        ledger << QStringLiteral("%1 +%2 -%3 =%4")
                      .arg(entry.description())
                      .arg(entry.charge)
                      .arg(entry.credit)
                      .arg(entry.balance);
    EXPECT_EQ(ledger, (QStringList{"Sale INV-1 +100 -0 =100", "Refund INV-2 +0 -30 =70",
                                   "Payment received — Mobile Money MM77 +0 -50 =20"}));
    EXPECT_EQ(accounts.balance(kofi), 20);

    // Unsaved, as the void would be mid-operation: the ledger already sees it.
    sale->setStatus(SaleStatus::voided);
    EXPECT_EQ(accounts.ledger(kofi).size(), 2);
    EXPECT_EQ(accounts.balance(kofi), -80);
}

TEST_F(AccountsServiceTest, CheckCreditAllowsHalfACentAndTreatsLimitZeroAsNone)
{
    const struct {
        const char* name;
        bool allowCredit;
        double limit;
        double owed;
        double amount;
        const char* error; // empty when it passes
    } cases[] = {
        {"within tolerance", true, 100, 0, 100.004, ""},
        {"just over", true, 100, 0, 100.006,
         "This would take Kofi over their credit limit. They can have up to ₵100.00 more on account."},
        {"owed lowers what is left", true, 100, 60, 40.01,
         "This would take Kofi over their credit limit. They can have up to ₵40.00 more on account."},
        {"already over the limit", true, 100, 120, 1,
         "This would take Kofi over their credit limit. They can have up to -₵20.00 more on account."},
        {"limit 0 is no limit", true, 0, 5000, 1000000, ""},
        {"negative limit is no limit", true, -5, 0, 1000000, ""},
        {"credit off", false, 100, 0, 10,
         "Kofi isn't set up to buy on credit. Turn on Allow Credit in Customers first."},
        {"nothing on account is no charge", false, 100, 0, 0.005, ""},
    };
    for (const auto& c : cases) {
        TestStore fresh;
        AccountsService service(fresh.context());
        const Ref<Customer> kofi =
            addCustomer(fresh.context(), {.allowCredit = c.allowCredit, .creditLimit = c.limit});
        if (c.owed > 0)
            addSale(fresh.context(), {.customer = kofi, .tenders = {{onAccount, c.owed}}});
        EXPECT_EQ(refusalOf([&] { service.checkCredit(kofi, c.amount); }),
                  QString::fromUtf8(c.error))
            << c.name;
    }
    EXPECT_EQ(refusalOf([&] { accounts.checkCredit(nullptr, 1); }),
              QStringLiteral("Add a customer to the sale to put it On Account."));
}

TEST_F(AccountsServiceTest, AgeingCountsCalendarDaysAtTheBucketEdges)
{
    // A late-evening charge and an early-morning asOf: whole days by the calendar, not by 24 hours.
    const QDateTime asOf = localAt(2026, 6, 30, 0, 5);
    const struct {
        int days;
        AgeBuckets expected;
    } cases[] = {
        {0, {100, 0, 0, 0}},  {30, {100, 0, 0, 0}}, {31, {0, 100, 0, 0}}, {60, {0, 100, 0, 0}},
        {61, {0, 0, 100, 0}}, {90, {0, 0, 100, 0}}, {91, {0, 0, 0, 100}},
    };
    for (const auto& c : cases) {
        AccountEntry charge;
        charge.charge = 100;
        charge.date = QDateTime(asOf.date().addDays(-c.days), QTime(23, 50));
        const AgeBuckets got = AccountsService::age({charge}, asOf);
        EXPECT_EQ(got.current, c.expected.current) << c.days;
        EXPECT_EQ(got.days31to60, c.expected.days31to60) << c.days;
        EXPECT_EQ(got.days61to90, c.expected.days61to90) << c.days;
        EXPECT_EQ(got.over90, c.expected.over90) << c.days;
    }
}

TEST_F(AccountsServiceTest, AgedBalancesPayTheOldestChargeFirstAndSkipCustomersInCredit)
{
    const QDateTime today = localAt(2026, 6, 30);
    Clock::Override now(today);
    const Ref<Customer> ama = addCustomer(context, {.name = QStringLiteral("Ama")});
    addSale(context, {.customer = ama, .at = today.addDays(-40), .tenders = {{onAccount, 100}}});
    addSale(context, {.customer = ama, .at = today.addDays(-5), .tenders = {{onAccount, 30}}});
    accounts.receivePayment(ama, 50, PaymentMethodType::cash, {}, {}, nullptr, nullptr);
    const Ref<Customer> kwame = addCustomer(context, {.name = QStringLiteral("Kwame")});
    addSale(context, {.customer = kwame, .at = today.addDays(-100), .tenders = {{onAccount, 200}}});
    const Ref<Customer> inCredit = addCustomer(context, {.name = QStringLiteral("Esi")});
    addSale(context, {.customer = inCredit, .tenders = {{onAccount, 10}}});
    addSale(context, {.customer = inCredit, .tenders = {{onAccount, -25}}});
    const Ref<Customer> cashOnly = addCustomer(context, {.name = QStringLiteral("Yaw")});
    addSale(context, {.customer = cashOnly, .tenders = {{PaymentMethodType::cash, 10}}});

    const QList<AgedBalance> rows = accounts.agedBalances({ama, kwame, inCredit, cashOnly}, today);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].customerName, QStringLiteral("Kwame"));
    EXPECT_EQ(rows[0].over90, 200);
    EXPECT_EQ(rows[1].customerName, QStringLiteral("Ama"));
    EXPECT_EQ(rows[1].days31to60, 50);
    EXPECT_EQ(rows[1].current, 30);
    EXPECT_EQ(rows[1].balance(), 80);
}

TEST_F(AccountsServiceTest, ReceivePaymentRoundsThenChecksWhatIsOwed)
{
    const struct {
        const char* name;
        double amount;
        PaymentMethodType method;
        const char* error; // empty when accepted
    } cases[] = {
        {"half a cent over rounds away", 100.004, PaymentMethodType::cash, ""},
        {"a cent over", 100.01, PaymentMethodType::cash, "That's more than the customer owes (₵100.00)."},
        {"rounds to nothing", 0.004, PaymentMethodType::card, "Enter an amount greater than zero."},
        {"negative", -5, PaymentMethodType::card, "Enter an amount greater than zero."},
        {"on account is no tender", 10, PaymentMethodType::onAccount,
         "Choose how the customer paid: cash, card, mobile money or other."},
    };
    for (const auto& c : cases) {
        TestStore fresh;
        AccountsService service(fresh.context());
        const Ref<Customer> kofi = addCustomer(fresh.context());
        const Ref<TillShift> shift = addShift(fresh.context());
        addSale(fresh.context(), {.customer = kofi, .tenders = {{onAccount, 100}}});
        Ref<CustomerPayment> made;
        const QString error = refusalOf([&] {
            made = service.receivePayment(kofi, c.amount, c.method, QStringLiteral("r"), QStringLiteral("n"),
                                          nullptr, shift);
        });
        EXPECT_EQ(error, QString::fromUtf8(c.error)) << c.name;
        EXPECT_EQ(countRowsOnDisk(fresh.path(), QStringLiteral("CustomerPayment")), made ? 1 : 0) << c.name;
        if (made) {
            EXPECT_EQ(made->amount(), 100.0) << c.name;
            EXPECT_EQ(made->tillShift(), shift) << c.name;
            EXPECT_EQ(service.balance(kofi), 0) << c.name;
        }
    }
}

TEST_F(AccountsServiceTest, StatementBringsEarlierEntriesForward)
{
    const Ref<Customer> kofi = addCustomer(context);
    addSale(context, {.invoice = "INV-1", .customer = kofi, .at = localAt(2026, 3, 1, 23, 59),
                      .tenders = {{onAccount, 100}}});
    addSale(context, {.invoice = "INV-2", .customer = kofi, .at = localAt(2026, 3, 2, 0, 1),
                      .tenders = {{onAccount, 1250.5}}});
    const AccountStatement all = accounts.statement(kofi, std::nullopt);
    EXPECT_EQ(all.rows.value(0), (QStringList{"2026-03-01", "Sale INV-1", "₵100.00", "", "₵100.00"}));
    EXPECT_EQ(all.rows.value(2), (QStringList{"", "Balance owed", "", "", "₵1,350.50"}));

    const AccountStatement fromSecond = accounts.statement(kofi, QDate(2026, 3, 2));
    ASSERT_EQ(fromSecond.rows.size(), 3);
    EXPECT_EQ(fromSecond.rows[0], (QStringList{"2026-03-02", "Balance brought forward", "", "", "₵100.00"}));
    EXPECT_EQ(fromSecond.rows[1][1], QStringLiteral("Sale INV-2"));
}

// A customer carried over from the credit book owes from the day written there: the ledger puts it
// first, the balance, available credit, ageing and statement all read it as a charge of that day.
TEST_F(AccountsServiceTest, AnOpeningBalanceIsAChargeFromItsOwnDay)
{
    const QDateTime today = localAt(2026, 6, 30);
    Clock::Override now(today);
    const Ref<Customer> kofi = addCustomer(context, {.creditLimit = 500});
    // The same day as the opening balance, and earlier in the day than its entry: still after it.
    addSale(context, {.invoice = "INV-1", .customer = kofi, .at = localAt(2026, 5, 1, 0, 0),
                      .tenders = {{onAccount, 40}}});
    accounts.recordOpeningBalance(kofi, 300.004, QDate(2026, 5, 1), QStringLiteral(" book p. 12 "), nullptr);
    accounts.receivePayment(kofi, 100, PaymentMethodType::cash, {}, {}, nullptr, nullptr);

    QStringList ledger;
    for (const AccountEntry& entry : accounts.ledger(kofi))
        ledger << QStringLiteral("%1 %2 +%3 -%4 =%5")
                      .arg(entry.date.toString(QStringLiteral("yyyy-MM-dd HH:mm")), entry.description())
                      .arg(entry.charge)
                      .arg(entry.credit)
                      .arg(entry.balance);
    EXPECT_EQ(ledger, (QStringList{"2026-05-01 00:00 Opening balance — book p. 12 +300 -0 =300",
                                   "2026-05-01 00:00 Sale INV-1 +40 -0 =340",
                                   "2026-06-30 12:00 Payment received — Cash +0 -100 =240"}));
    EXPECT_EQ(accounts.balance(kofi), 240);
    EXPECT_EQ(accounts.balancesByCustomer().value(kofi->idText()), 240);
    EXPECT_EQ(accounts.availableCredit(kofi), 260);
    EXPECT_EQ(refusalOf([&] { accounts.checkCredit(kofi, 260.01); }),
              QStringLiteral("This would take Kofi over their credit limit. They can have up to ₵260.00 more "
                             "on account."));

    // 60 days old: the payment settles the oldest first, leaving 200 of it in 31–60.
    const QList<AgedBalance> aged = accounts.agedBalances({kofi}, today);
    ASSERT_EQ(aged.size(), 1);
    EXPECT_EQ(aged[0].days31to60, 240);
    EXPECT_EQ(accounts.age(accounts.ledger(kofi), localAt(2026, 7, 1)).days61to90, 240);

    const AccountStatement statement = accounts.statement(kofi, std::nullopt);
    EXPECT_EQ(statement.rows.value(0),
              (QStringList{"2026-05-01", "Opening balance — book p. 12", "₵300.00", "", "₵300.00"}));
    EXPECT_EQ(statement.rows.last(), (QStringList{"", "Balance owed", "", "", "₵240.00"}));
    const AccountStatement later = accounts.statement(kofi, QDate(2026, 5, 2));
    EXPECT_EQ(later.rows.value(0), (QStringList{"2026-05-02", "Balance brought forward", "", "", "₵340.00"}));

    // It is paid like any charge, and a customer can clear it whole.
    EXPECT_EQ(refusalOf([&] { accounts.receivePayment(kofi, 240, PaymentMethodType::card, {}, {}, nullptr,
                                                      nullptr); }),
              QString());
    EXPECT_EQ(accounts.balance(kofi), 0);
}

TEST_F(AccountsServiceTest, AnOpeningBalanceIsRefusedBeforeAnythingIsWritten)
{
    const QDateTime today = localAt(2026, 6, 30, 23, 59);
    Clock::Override now(today);
    const struct {
        const char* name;
        double amount;
        QDate since;
        bool alreadyHasOne;
        const char* error; // empty when accepted
    } cases[] = {
        {"today, late in the evening", 50, today.date(), false, ""},
        {"years back", 50, QDate(2019, 1, 1), false, ""},
        {"tomorrow", 50, today.date().addDays(1), false,
         "An opening balance is what was owed already: choose today or an earlier day."},
        {"no day at all", 50, QDate(), false,
         "An opening balance is what was owed already: choose today or an earlier day."},
        {"rounds to nothing", 0.004, today.date(), false, "Enter an amount greater than zero."},
        {"negative", -20, today.date(), false, "Enter an amount greater than zero."},
        {"a second one", 50, today.date(), true,
         "Kofi already has an opening balance of ₵75.50, owed since Jan 2, 2026. A customer has only one; "
         "record what changed since as a sale or a payment."},
    };
    for (const auto& c : cases) {
        TestStore fresh;
        AccountsService service(fresh.context());
        const Ref<Customer> kofi = addCustomer(fresh.context());
        if (c.alreadyHasOne)
            service.recordOpeningBalance(kofi, 75.5, QDate(2026, 1, 2), {}, nullptr);
        const qint64 before = countRowsOnDisk(fresh.path(), QStringLiteral("AccountOpeningBalance"));
        const QString error =
            refusalOf([&] { service.recordOpeningBalance(kofi, c.amount, c.since, {}, nullptr); });
        EXPECT_EQ(error, QString::fromUtf8(c.error)) << c.name;
        EXPECT_EQ(countRowsOnDisk(fresh.path(), QStringLiteral("AccountOpeningBalance")),
                  before + (error.isEmpty() ? 1 : 0))
            << c.name;
    }
}
} // namespace

// Amounts that aren't whole cents (10.004 typed as a tender) once made Balance Owed ₵20.01 while the
// ledger and the statement ended at ₵20.00: the four views of one account must agree to the cent.
TEST_F(AccountsServiceTest, BalanceLedgerStatementAndAgedListAgreeOnOddAmounts)
{
    const struct {
        const char* name;
        std::vector<double> charges;
        std::vector<double> credits;
    } cases[] = {
        {"two charges of 10.004", {10.004, 10.004}, {}},
        {"three of 0.005", {0.005, 0.005, 0.005}, {}},
        {"halves rounding up then paid", {1.005, 2.675}, {1.5}},
        {"a refund of an odd amount", {19.999, -4.445}, {}},
    };
    for (const auto& c : cases) {
        TestStore fresh;
        ModelContext& here = fresh.context();
        AccountsService service(here);
        const Ref<Customer> kofi = addCustomer(here);
        int day = 1;
        for (double charge : c.charges)
            addSale(here, {.customer = kofi, .at = localAt(2026, 3, day++), .tenders = {{onAccount, charge}}});
        for (double credit : c.credits) {
            auto payment = std::make_shared<CustomerPayment>();
            payment->setCustomer(kofi);
            payment->setAmount(credit);
            payment->setTimestamp(localAt(2026, 3, day++));
            here.insert(payment);
            here.save();
        }
        const double owed = service.balance(kofi);
        const QList<AccountEntry> ledger = service.ledger(kofi);
        ASSERT_FALSE(ledger.isEmpty()) << c.name;
        EXPECT_EQ(ledger.last().balance, owed) << c.name;
        EXPECT_EQ(service.balancesByCustomer().value(kofi->idText()), owed) << c.name;
        const AccountStatement statement = service.statement(kofi, std::nullopt);
        EXPECT_EQ(statement.rows.last().last(), statement.rows.at(statement.rows.size() - 2).last()) << c.name;
        EXPECT_EQ(statement.rows.last().last(), Currency::format(owed, Currency::fixedSign)) << c.name;
        const QList<AgedBalance> aged = service.agedBalances({kofi}, localAt(2026, 4, 1));
        ASSERT_EQ(aged.size(), 1) << c.name;
        EXPECT_EQ(aged.first().balance(), owed) << c.name;
    }
}
