#include "reports/dashboardviewmodel.h"

#include "clock/clock.h"
#include "records/records.h"
#include "store/sqlite.h"
#include "support/storedsales.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {

using Method = PaymentMethodType;

QStringList texts(const QList<DashboardLine>& lines)
{
    QStringList result;
    for (const DashboardLine& line : lines)
        result << line.label + u'|' + line.value;
    return result;
}

class DashboardViewModelTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    QDateTime now{QDate(2026, 3, 9), QTime(15, 0)};
    Clock::Override clock{[this] { return now; }};
    StoredSales scene{context};
    AccountsService accounts{context};
    TillService till{context};
    SessionStore session;
    DashboardViewModel model{context, accounts, till, session};

    static QDateTime at(int day, int hour, int minute = 0) { return {QDate(2026, 3, day), QTime(hour, minute)}; }
};

} // namespace

// Sales either side of midnight, a refund, a void and a split payment: each enters today's figures
// the way the reports count them, and nothing of yesterday does.
TEST_F(DashboardViewModelTest, TodaysFiguresCountTodaysSalesAsTheReportsDo)
{
    const Ref<Product> malta = scene.product({.name = "Malta"});
    const Ref<Product> rice = scene.product({.name = "Rice"});
    // 2 × 10 + 15% tax, cost 4 each: profit 12. Paid half in cash, the rest by mobile money.
    const Ref<Sale> first = scene.sale({at(9, 10), {{malta, 2, 10, 4, 0.15}}, {{Method::cash, 10}, {Method::mobileMoney, 13}}});
    scene.sale({at(9, 12), {{rice, 1, 50, 30, 0.15}}, {{Method::card, 57.5}}});
    // One malta back in cash: lowers the money and the profit, not the count.
    scene.sale({at(9, 14), {{malta, -1, 10, 4, 0.15}}, {{Method::cash, -11.5}}, nullptr, first});
    scene.sale({at(9, 13), {{rice, 1, 50, 30, 0.15}}, {{Method::cash, 57.5}}, nullptr, nullptr, true});
    scene.sale({at(8, 23, 59), {{rice, 4, 50, 30, 0.15}}, {{Method::cash, 230}}});

    model.refresh();

    EXPECT_EQ((QStringList{model.titleText(), model.netSalesText(), model.transactionsText(),
                           model.averageBasketText(), model.taxCollectedText(), model.grossProfitText()}),
              (QStringList{"Today, Mar 9, 2026", "₵69.00", "2", "₵34.50", "₵9.00", "₵26.00"}));
    // The split sale counts once under each of its methods; the refund takes from cash.
    EXPECT_EQ(texts(model.paymentLines()),
              (QStringList{"Card|₵57.50", "Mobile Money|₵13.00", "Cash|-₵1.50"}));

    // The next morning starts from nothing, without yesterday's sales.
    now = at(10, 8);
    model.refresh();
    EXPECT_EQ((QStringList{model.titleText(), model.netSalesText(), model.averageBasketText()}),
              (QStringList{"Today, Mar 10, 2026", "₵0.00", "₵0.00"}));
    EXPECT_TRUE(model.paymentLines().isEmpty());
}

// Only customers who owe add up: one in credit takes nothing off another's debt, and a voided
// sale on account or one from years ago is treated as the account treats it.
TEST_F(DashboardViewModelTest, OwedToYouAddsWhatEachOwingCustomerOwes)
{
    const Ref<Product> goods = scene.product({});
    const Ref<Customer> kofi = scene.customer("Kofi");
    const Ref<Customer> ama = scene.customer("Ama");
    const Ref<Customer> esi = scene.customer("Esi");
    scene.sale({QDateTime(QDate(2021, 5, 1), QTime(9, 0)), {{goods, 10, 10}}, {{Method::onAccount, 100}}, kofi});
    accounts.receivePayment(kofi, 30, Method::cash, QString(), QString(), nullptr, nullptr);
    scene.sale({at(9, 9), {{goods, 5, 10}}, {{Method::onAccount, 50}}, kofi, nullptr, true});
    // Ama bought 10 on account and was refunded 30 to it: 20 in credit.
    const Ref<Sale> amasSale = scene.sale({at(2, 9), {{goods, 1, 10}}, {{Method::onAccount, 10}}, ama});
    scene.sale({at(3, 9), {{goods, -3, 10}}, {{Method::onAccount, -30}}, ama, amasSale});
    scene.sale({at(9, 11), {{goods, 4, 10}}, {{Method::onAccount, 25}, {Method::cash, 15}}, esi});

    model.refresh();
    EXPECT_EQ(model.owedToYouText(), "₵95.00");
}

// The calculator's rule on the products the store finds low: active, counting stock, at or below
// the reorder level, lowest first, each quantity in its unit.
TEST_F(DashboardViewModelTest, LowStockListsActiveStockedProductsAtOrBelowTheirLevel)
{
    scene.product({.name = "Malta", .stock = 6, .reorderLevel = 5});
    scene.product({.name = "Rice", .stock = 5, .reorderLevel = 5});
    scene.product({.name = "Flour", .stock = 1.5, .reorderLevel = 10, .unit = SellingUnit::kg});
    scene.product({.name = "Old stock", .stock = 0, .reorderLevel = 5, .isActive = false});
    scene.product({.name = "Haircut", .stock = 0, .reorderLevel = 5, .type = ProductType::service});
    scene.product({.name = "Gift wrap", .stock = -2, .reorderLevel = 5, .type = ProductType::nonInventory});

    model.refresh();
    EXPECT_EQ(model.lowStockCountText(), "2");
    EXPECT_EQ(texts(model.lowStockLines()), (QStringList{"Flour|1.5 kg left", "Rice|5 left"}));
}

TEST_F(DashboardViewModelTest, TillStatusSaysWhenTheOpenShiftStartedAndWithWhat)
{
    model.refresh();
    EXPECT_EQ(model.tillStatusText() + u'|' + model.tillStatusNote(),
              "No till open|Open a till shift before selling.");

    const Ref<TillShift> shift = till.openShift(nullptr, 200);
    // Left open overnight, the time alone would pass for this morning's.
    for (const auto& [openedAt, status] : {std::pair{at(9, 9, 5), "Opened 9:05 AM with ₵200.00 float"},
                                           std::pair{at(8, 18, 30), "Opened Mar 8, 6:30 PM with ₵200.00 float"}}) {
        performUnitOfWork(context, [&] { shift->setOpenedAt(openedAt); });
        model.refresh();
        EXPECT_EQ(model.tillStatusText() + u'|' + model.tillStatusNote(), QString::fromUtf8(status) + u'|');
    }
}

// Every read the dashboard makes, failed in turn: the reason is shown and no figure is left from a
// half-finished read; the next good read clears the message.
TEST_F(DashboardViewModelTest, AFailedReadShowsWhyAndNoHalfReadFigures)
{
    const Ref<Product> rice = scene.product({.name = "Rice", .stock = 1});
    scene.sale({at(9, 10), {{rice, 1, 50, 30}}, {{Method::cash, 50}}});
    const Ref<Customer> kofi = scene.customer("Kofi");
    scene.sale({at(9, 11), {{rice, 1, 20}}, {{Method::onAccount, 20}}, kofi});
    till.openShift(nullptr, 100);

    int failures = 0;
    for (qint64 nth = 1; nth < 100; ++nth) {
        SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
        model.refresh();
        const bool fired = SqliteConnection::faultFired();
        SqliteConnection::clearFault();
        if (!fired)
            break;
        ++failures;
        ASSERT_TRUE(model.errorMessage().has_value()) << nth;
        EXPECT_EQ((QStringList{model.netSalesText(), model.owedToYouText(), model.lowStockCountText(),
                               model.tillStatusText(), QString::number(model.paymentLines().size())}),
                  (QStringList{"₵0.00", "₵0.00", "0", "No till open", "0"}))
            << nth;
    }
    EXPECT_GT(failures, 4) << "every kind of read was reached";
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ((QStringList{model.netSalesText(), model.owedToYouText(), model.lowStockCountText()}),
              (QStringList{"₵70.00", "₵20.00", "1"}));
    EXPECT_TRUE(model.isTillOpen());
}
