#include "ui/dashboard/dashboardview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"

#include "clock/clock.h"
#include "support/storedsales.h"

#include <QTableWidget>

namespace {
using Method = PaymentMethodType;

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

TEST_F(DashboardViewTest, ShowsTodaysFiguresOnItsCardsAndLists)
{
    const Ref<Product> rice = scene.product({.name = "Rice", .stock = 3, .reorderLevel = 10});
    scene.product({.name = "Palm oil", .stock = 2.5, .reorderLevel = 5, .unit = SellingUnit::litre});
    scene.sale({today(10), {{rice, 2, 40, 25}}, {{Method::cash, 50}, {Method::card, 30}}});
    scene.sale({today(11), {{rice, 1, 40, 25}}, {{Method::mobileMoney, 40}}});
    const Ref<TillShift> shift = environment.tillService().openShift(nullptr, 150);
    performUnitOfWork(store.context(), [&] { shift->setOpenedAt(today(8, 15)); });

    DashboardView& dashboard = openDashboard();

    EXPECT_EQ(dashboard.titleLabel()->text(), "Today, Mar 9, 2026");
    EXPECT_FALSE(dashboard.errorLabel()->isVisible());
    EXPECT_EQ((QStringList{dashboard.netSalesFigure()->text(), dashboard.transactionsFigure()->text(),
                           dashboard.averageBasketFigure()->text(), dashboard.taxCollectedFigure()->text(),
                           dashboard.grossProfitFigure()->text(), dashboard.owedToYouFigure()->text(),
                           dashboard.lowStockCountFigure()->text()}),
              (QStringList{"₵120.00", "2", "₵60.00", "₵0.00", "₵45.00", "₵0.00", "2"}));
    EXPECT_EQ(dashboard.tillStatusFigure()->text(), "Opened 8:15 AM with ₵150.00 float");
    EXPECT_FALSE(dashboard.tillStatusNote()->isVisible());
    const QStringList captions = visibleTexts(&dashboard);
    for (const char* caption : {"Customer accounts", "Needs reorder", "Payment Totals Today", "Low Stock Alerts"})
        EXPECT_TRUE(captions.contains(QString::fromUtf8(caption))) << caption;

    ASSERT_EQ(dashboard.paymentTable()->rowCount(), 3);
    EXPECT_EQ(rowTexts(*dashboard.paymentTable(), 0), (QStringList{"Cash", "₵50.00"}));
    EXPECT_EQ(rowTexts(*dashboard.paymentTable(), 2), (QStringList{"Card", "₵30.00"}));
    EXPECT_FALSE(dashboard.noPaymentsLabel()->isVisible());
    ASSERT_EQ(dashboard.lowStockTable()->rowCount(), 2);
    EXPECT_EQ(rowTexts(*dashboard.lowStockTable(), 0), (QStringList{"Palm oil", "2.5 L left"}));
    EXPECT_EQ(rowTexts(*dashboard.lowStockTable(), 1), (QStringList{"Rice", "3 left"}));

    // A change saved while it is on show reaches it at once.
    environment.tillService().closeShift(shift, 150, QString(), nullptr);
    EXPECT_EQ(dashboard.tillStatusFigure()->text(), "No till open");
    EXPECT_TRUE(dashboard.tillStatusNote()->isVisible());
}

// Read again each time it comes back into view, not only when something was saved meanwhile.
TEST_F(DashboardViewTest, AnEmptyDayReadsAgainWhenShown)
{
    DashboardView& dashboard = openDashboard();
    EXPECT_TRUE(dashboard.noPaymentsLabel()->isVisible());
    EXPECT_EQ(dashboard.noPaymentsLabel()->text(), "No payments recorded yet.");
    EXPECT_FALSE(dashboard.paymentTable()->isVisible());
    EXPECT_EQ(dashboard.tillStatusFigure()->text(), "No till open");
    EXPECT_EQ(dashboard.tillStatusNote()->text(), "Open a till shift before selling.");

    dashboard.hide();
    Clock::Override nextDay{QDateTime(QDate(2026, 3, 10), QTime(7, 0))};
    dashboard.show();
    EXPECT_EQ(dashboard.titleLabel()->text(), "Today, Mar 10, 2026");
}
