#include "ui/dashboard/dashboardview.h"

#include "ui/controls/screentest.h"

#include "clock/clock.h"
#include "support/storedsales.h"

#include <QTableWidget>

namespace {
class DashboardViewTest : public ScreenTest {
protected:
    DashboardView& openDashboard()
    {
        signIn(UserRole::admin);
        return goTo<DashboardView>(QStringLiteral("Dashboard"));
    }

    static QDateTime today(int hour, int minute = 0) { return {QDate(2026, 3, 9), QTime(hour, minute)}; }

    Clock::Override clock{today(16)};
    StoredSales scene{store.context()};
};
} // namespace

// The figures are the view model's; here each reaches its place, and a save while on show too.
TEST_F(DashboardViewTest, ShowsTodaysFiguresOnItsCardsAndLists)
{
    const Ref<Product> rice = scene.product({.name = "Rice", .stock = 3, .reorderLevel = 10});
    scene.product({.name = "Palm oil", .stock = 2.5, .reorderLevel = 5, .unit = SellingUnit::litre});
    scene.sale({today(10), {{rice, 2, 40, 25}}, {{PaymentMethodType::cash, 50}, {PaymentMethodType::card, 30}}});
    scene.sale({today(11), {{rice, 1, 40, 25}}, {{PaymentMethodType::mobileMoney, 40}}});
    const Ref<TillShift> shift = environment.tillService().openShift(nullptr, 150);
    performUnitOfWork(store.context(), [&] { shift->setOpenedAt(today(8, 15)); });

    DashboardView& dashboard = openDashboard();
    EXPECT_EQ((QStringList{dashboard.titleLabel()->text(), dashboard.netSalesFigure()->text(),
                           dashboard.transactionsFigure()->text(), dashboard.averageBasketFigure()->text(),
                           dashboard.taxCollectedFigure()->text(), dashboard.grossProfitFigure()->text(),
                           dashboard.owedToYouFigure()->text(), dashboard.lowStockCountFigure()->text(),
                           dashboard.tillStatusFigure()->text()}),
              (QStringList{"Today, Mar 9, 2026", "₵120.00", "2", "₵60.00", "₵0.00", "₵45.00", "₵0.00", "2",
                           "Opened 8:15 AM with ₵150.00 float"}));
    const QStringList shown = visibleTexts(&dashboard);
    for (const char* caption : {"Customer accounts", "Needs reorder", "Payment Totals Today", "Low Stock Alerts"})
        EXPECT_TRUE(shown.contains(QString::fromUtf8(caption))) << caption;
    EXPECT_FALSE(dashboard.tillStatusNote()->isVisible());
    ASSERT_EQ(dashboard.paymentTable()->rowCount(), 3);
    EXPECT_EQ(rowTexts(*dashboard.paymentTable(), 2), (QStringList{"Card", "₵30.00"}));
    ASSERT_EQ(dashboard.lowStockTable()->rowCount(), 2);
    EXPECT_EQ(rowTexts(*dashboard.lowStockTable(), 0), (QStringList{"Palm oil", "2.5 L left"}));

    environment.tillService().closeShift(shift, 150, QString());
    EXPECT_EQ(dashboard.tillStatusFigure()->text(), "No till open");
    EXPECT_TRUE(dashboard.tillStatusNote()->isVisible());
}

// Read again each time it comes back into view, not only after a save: the day may have turned.
TEST_F(DashboardViewTest, AnEmptyDaySaysSoAndReadsAgainWhenShown)
{
    DashboardView& dashboard = openDashboard();
    EXPECT_TRUE(dashboard.noPaymentsLabel()->isVisible());
    EXPECT_EQ(dashboard.noPaymentsLabel()->text(), "No payments recorded yet.");
    EXPECT_FALSE(dashboard.paymentTable()->isVisible());
    EXPECT_EQ(dashboard.tillStatusNote()->text(), "Open a till shift before selling.");

    dashboard.hide();
    const Clock::Override nextDay{QDateTime(QDate(2026, 3, 10), QTime(7, 0))};
    dashboard.show();
    EXPECT_EQ(dashboard.titleLabel()->text(), "Today, Mar 10, 2026");
}
