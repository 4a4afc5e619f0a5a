#include "till/tillservice.h"

#include "customers/accountbuilders.h"
#include "customers/accountsservice.h"
#include "records/cashmovement.h"
#include "store/storeerror.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {
QUuid addShift(ModelContext& context, const char* status)
{
    auto shift = std::make_shared<TillShift>();
    shift->setStatusRaw(status);
    context.insert(shift);
    context.save();
    return shift->id();
}

void addMovement(ModelContext& context, const Ref<TillShift>& shift, const char* type, double amount)
{
    auto movement = std::make_shared<CashMovement>();
    movement->setTillShift(shift);
    movement->setTypeRaw(QString::fromUtf8(type));
    movement->setAmount(amount);
    context.insert(movement);
    context.save();
}

class TillServiceTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    TillService till{context};
};
} // namespace

TEST_F(TillServiceTest, ShiftLeftOpenIsFoundOnTheNextLaunch)
{
    EXPECT_EQ(till.currentOpenShift(), nullptr);
    addShift(context, "closed");
    addShift(context, "Open"); // raw texts are exact
    EXPECT_EQ(till.currentOpenShift(), nullptr);

    const QUuid open = addShift(context, "open");
    store.reopen();
    const Ref<TillShift> found = TillService(store.context()).currentOpenShift();
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->id(), open);
}

TEST_F(TillServiceTest, OpeningIsRefusedWhileAnyShiftIsOpenOrTheFloatIsNegative)
{
    EXPECT_EQ(refusalOf([&] { till.openShift(nullptr, -5); }),
              QStringLiteral("Enter an amount greater than zero."));
    const Ref<TillShift> first = till.openShift(nullptr, 0);
    EXPECT_EQ(first->statusRaw(), QStringLiteral("open"));
    EXPECT_EQ(refusalOf([&] { till.openShift(nullptr, 100); }),
              QStringLiteral("A till shift is already open for this cashier."));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("TillShift")), 1);
}

TEST_F(TillServiceTest, ExpectedCashAddsTheShiftsCashInAndOut)
{
    const Ref<TillShift> shift = addShift(context, 100.0);
    const Ref<TillShift> other = addShift(context, 0.0);
    const Ref<Customer> kofi = addCustomer(context);
    addSale(context, {.customer = kofi, .tenders = {{PaymentMethodType::onAccount, 500}}});
    // 60 handed over for 50: the 10 change went back out of the drawer.
    addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, 50, 60}}});
    addSale(context, {.shift = shift,
                      .tenders = {{PaymentMethodType::card, 70},
                                  {PaymentMethodType::mobileMoney, 8},
                                  {PaymentMethodType::onAccount, 9}}});
    const Ref<Sale> voided = addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, 40}}});
    addSale(context, {.shift = other, .tenders = {{PaymentMethodType::cash, 1000}}});
    addSale(context,
            {.shift = shift, .tenders = {{PaymentMethodType::cash, 7}}, .method = QStringLiteral("token")});
    addMovement(context, shift, "payIn", 20);
    addMovement(context, shift, "payOut", 30);
    addMovement(context, shift, "float top-up", 5); // unknown kind reads as a pay-in
    addMovement(context, other, "payOut", 500);
    AccountsService(context).receivePayment(kofi, 10, PaymentMethodType::cash, {}, {}, nullptr, shift);
    AccountsService(context).receivePayment(kofi, 15, PaymentMethodType::card, {}, {}, nullptr, shift);
    AccountsService(context).receivePayment(kofi, 7, PaymentMethodType::cash, {}, {}, nullptr, other);

    voided->setStatus(SaleStatus::voided);
    context.save();
    EXPECT_EQ(till.cashSalesTotal(shift), 57);
    EXPECT_EQ(till.expectedCash(shift), 162);

    // A cash refund on the shift lowers it at once, saved or not.
    addSale(context, {.shift = shift, .tenders = {{PaymentMethodType::cash, -12.5}}});
    EXPECT_EQ(till.cashSalesTotal(shift), 44.5);
    EXPECT_EQ(till.expectedCash(shift), 149.5);
}

TEST_F(TillServiceTest, CloseFreezesTheFiguresAndRoundsTheVariance)
{
    const struct {
        double counted;
        double variance;
    } cases[] = {{120.004, 0}, {119.996, 0}, {119.99, -0.01}, {121.5, 1.5}};
    for (const auto& c : cases) {
        TestStore fresh;
        TillService service(fresh.context());
        const Ref<TillShift> shift = service.openShift(nullptr, 100);
        const Ref<Sale> sale =
            addSale(fresh.context(), {.shift = shift, .tenders = {{PaymentMethodType::cash, 20}}});
        service.closeShift(shift, c.counted, QStringLiteral("n"));
        EXPECT_EQ(shift->variance(), c.variance) << c.counted;
        EXPECT_EQ(shift->expectedCash(), 120) << c.counted;
        EXPECT_EQ(shift->statusRaw(), QStringLiteral("closed"));
        EXPECT_TRUE(shift->closedAt().has_value());

        sale->setStatus(SaleStatus::voided);
        fresh.context().save();
        fresh.reopen();
        EXPECT_EQ(fresh.context().find<TillShift>(shift->id())->expectedCash(), 120) << c.counted;
    }
}

// A store that can't be read is not a store without an open shift: that once let a second shift
// be opened beside the first.
TEST_F(TillServiceTest, AFailedReadOfTheOpenShiftIsReportedNotTakenForNone)
{
    till.openShift(nullptr, 100);
    for (const qint64 nth : {1, 2}) {
        SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
        EXPECT_THROW(till.currentOpenShift(), StoreError);
        SqliteConnection::clearFault();
        SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
        EXPECT_THROW(till.openShift(nullptr, 0), StoreError);
        SqliteConnection::clearFault();
    }
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("TillShift")), 1);
}
