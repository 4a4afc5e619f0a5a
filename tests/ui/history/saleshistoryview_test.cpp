#include "ui/history/saleshistoryview.h"

#include "ui/access/approvalsheet.h"
#include "ui/controls/errorlabel.h"
#include "ui/history/saledetail.h"
#include "ui/history/saleslistmodel.h"
#include "ui/history/voidsalesheet.h"
#include "ui/receipts/receiptprintview.h"
#include "ui/receipts/receiptview.h"

#include "ui/salesscreentest.h"

#include "support/receiptdevices.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace {
class SalesHistoryViewTest : public SalesScreenTest {
protected:
    // Signed in as a cashier, with the till open, two sales by the cashier and one by the admin.
    SalesHistoryView& openHistory()
    {
        signIn(UserRole::cashier);
        session.setCurrentTillShift(environment.tillService().openShift(user, 100));
        for (const auto& [cashier, quantity] : {std::pair{user, 1}, {user, 2}, {admin, 5}}) {
            Cart cart;
            cart.addOrIncrement(soap, quantity);
            sales.append(environment.salesService().checkout(cart, SalesScene::paidBy(cart, *session.settings()),
                                                             cashier, session.currentTillShift(),
                                                             *session.settings()));
        }
        return goTo<SalesHistoryView>(QStringLiteral("Sales History"));
    }
    QList<Ref<Sale>> sales;
};
} // namespace

// Who may void what, and the texts of refusals, are the void service's; here the sheets are wired.
TEST_F(SalesHistoryViewTest, ACashierFindsTheirOwnSaleAndVoidsItWithAnAdminsPin)
{
    SalesHistoryView& history = openHistory();
    ASSERT_EQ(history.listModel().rowCount(), 2) << "the admin's sale left out";
    QTest::keyClicks(history.searchField(), "0002");
    EXPECT_EQ(history.listModel().rowCount(), 1);
    ASSERT_TRUE(history.selectSale(sales[1]->id()));
    SaleDetail* detail = history.detail();
    EXPECT_EQ(rowTexts(*detail->lineTable(), 0), (QStringList{"Soap", "2 x ₵10.00"}));

    detail->voidButton()->click();
    auto* sheet = detail->findChild<VoidSaleSheet*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(visibleTexts(sheet).contains(
        "•  Give the customer back ₵20.00 cash — it comes out of the till's Expected Cash."));
    EXPECT_FALSE(sheet->primaryButton()->isEnabled()) << "a reason first";
    QTest::keyClicks(sheet->reasonField(), "rung up twice");
    sheet->primaryButton()->click();
    auto* approval = sheet->findChild<ApprovalSheet*>();
    ASSERT_NE(approval, nullptr) << "voids need an admin's PIN by default";
    QTest::keyClicks(approval->pinField(), "1111");
    approval->primaryButton()->click();
    EXPECT_TRUE(approval->errorLabel()->isVisible());
    EXPECT_EQ(sales[1]->status(), SaleStatus::completed);
    QTest::keyClicks(approval->pinField(), "4321");
    approval->primaryButton()->click();

    EXPECT_EQ(sales[1]->voidedByName(), "Esi (approved by Akosua)");
    EXPECT_EQ(history.detail(), detail);
    EXPECT_TRUE(detail->voidedBanner()->isVisible());
    EXPECT_TRUE(detail->voidedDetails()->text().endsWith("\nReason: rung up twice"));
    EXPECT_TRUE(detail->voidButton()->isHidden());
    EXPECT_EQ(history.listModel().index(0).data(SalesListModel::badgeRole).toString(), "Voided");
    history.toField()->setDate(QDate(2026, 3, 8));
    EXPECT_TRUE(history.isShowingNoSales());
}

// The receipt screen on its own, with a receipt printer that remembers what it printed.
TEST(ReceiptViewTest, PrintsTheSaleItShowsThroughTheReceiptPrinter)
{
    TestStore store;
    auto printer = std::make_unique<RecordedReceiptPrinter>();
    RecordedReceiptPrinter& printed = *printer;
    ReceiptDevices devices;
    devices.printerDirectory = std::make_unique<ListedPrinters>();
    devices.rawPrintTransport = std::make_unique<RecordedTransport>();
    devices.receiptPrinter = std::move(printer);
    AppEnvironment environment(store.context(), nullptr, nullptr, std::move(devices));
    SessionStore session;
    session.setSettings(environment.loadOrCreateSettings());
    Cart cart;
    cart.addOrIncrement(SalesScene(store.context()).product({}), 1);
    const Ref<Sale> sale = environment.salesService().checkout(
        cart, SalesScene::paidBy(cart, *session.settings()), nullptr, nullptr, *session.settings());

    QWidget parent;
    ReceiptView* view = ReceiptView::present(*sale, environment, session, &parent);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->preview()->receipt().invoiceNumber, sale->invoiceNumber());
    view->primaryButton()->click();
    ASSERT_EQ(printed.printed.size(), 1);
    EXPECT_EQ(printed.printed[0].receipt.invoiceNumber, sale->invoiceNumber());
    EXPECT_TRUE(printed.printed[0].useThermalWidth);
}
