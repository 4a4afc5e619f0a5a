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
    // Signed in, with the till open and sales rung up: `own` by the user, one more by the admin.
    SalesHistoryView& openHistory(UserRole role, int own)
    {
        signIn(role);
        session.setCurrentTillShift(environment.tillService().openShift(user, 100));
        for (int i = 0; i < own; ++i)
            sales.append(sell(user, i + 1));
        sales.append(sell(admin, 5));
        return goTo<SalesHistoryView>(QStringLiteral("Sales History"));
    }
    Ref<Sale> sell(const Ref<User>& cashier, double quantity)
    {
        Cart cart;
        cart.addOrIncrement(soap, quantity);
        return environment.salesService().checkout(cart, SalesScene::paidBy(cart, *session.settings()),
                                                   cashier, session.currentTillShift(), *session.settings());
    }
    static QStringList invoices(const SalesHistoryView& view)
    {
        QStringList listed;
        for (int row = 0; row < view.listModel().rowCount(); ++row)
            listed << view.listModel().index(row).data().toString();
        return listed;
    }

    QList<Ref<Sale>> sales;
};

} // namespace

TEST_F(SalesHistoryViewTest, ACashierFindsTheirOwnSaleAndVoidsItWithAnAdminsPin)
{
    SalesHistoryView& history = openHistory(UserRole::cashier, 2);
    EXPECT_EQ(invoices(history), (QStringList{"INV-20260309-0002", "INV-20260309-0001"}))
        << "newest first, the admin's sale left out";
    const QModelIndex top = history.listModel().index(0);
    EXPECT_EQ(top.data(SalesListModel::totalRole).toString(), "₵20.00");
    EXPECT_EQ(top.data(SalesListModel::cashierRole).toString(), "Esi");
    EXPECT_EQ(top.data(SalesListModel::badgeRole).toString(), "");

    ASSERT_TRUE(history.selectSale(sales[1]->id()));
    SaleDetail* detail = history.detail();
    ASSERT_NE(detail, nullptr);
    EXPECT_TRUE(detail->voidedBanner()->isHidden());
    EXPECT_EQ(detail->totalLabel()->text(), "₵20.00");
    EXPECT_EQ(rowTexts(*detail->lineTable(), 0), (QStringList{"Soap", "2 x ₵10.00"}));
    EXPECT_EQ(rowTexts(*detail->paymentTable(), 0), (QStringList{"Cash", "₵20.00"}));
    EXPECT_TRUE(detail->voidButton()->isEnabled()) << "the approval comes after";
    EXPECT_TRUE(detail->voidNote()->text().startsWith("Cancels a sale rung up by mistake today"));

    detail->voidButton()->click();
    auto* sheet = detail->findChild<VoidSaleSheet*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->windowTitle(), "Void " + sales[1]->invoiceNumber() + "?");
    EXPECT_TRUE(visibleTexts(sheet).contains(
        "•  Give the customer back ₵20.00 cash — it comes out of the till's Expected Cash."));
    EXPECT_FALSE(sheet->primaryButton()->isEnabled()) << "a reason first";
    QTest::keyClicks(sheet->reasonField(), "rung up twice");
    ASSERT_TRUE(sheet->primaryButton()->isEnabled());
    sheet->primaryButton()->click();

    auto* approval = sheet->findChild<ApprovalSheet*>();
    ASSERT_NE(approval, nullptr) << "voids need an admin's PIN by default";
    EXPECT_TRUE(visibleTexts(approval).contains("Void " + sales[1]->invoiceNumber() +
                                                " (₵20.00). Reason: rung up twice"));
    QTest::keyClicks(approval->pinField(), "1111");
    approval->primaryButton()->click();
    EXPECT_EQ(approval->errorLabel()->text(), "That isn't an admin's PIN. Ask an admin to enter theirs.");
    EXPECT_EQ(sales[1]->status(), SaleStatus::completed);
    QTest::keyClicks(approval->pinField(), "4321");
    approval->primaryButton()->click();

    EXPECT_EQ(sales[1]->status(), SaleStatus::voided);
    EXPECT_EQ(sales[1]->voidedByName(), "Esi (approved by Akosua)");
    const Ref<AuditEntry> logged = store.context().fetchFirst<AuditEntry>();
    ASSERT_NE(logged, nullptr);
    EXPECT_EQ(logged->actionRaw(), "void");
    EXPECT_EQ(logged->approverName(), "Akosua");
    EXPECT_EQ(logged->reference(), sales[1]->invoiceNumber());
    EXPECT_DOUBLE_EQ(soap->stockQuantity(), 50 - 1 - 5) << "the voided sale's two came back";

    // The list and the detail follow the void.
    ASSERT_EQ(history.detail(), detail);
    EXPECT_TRUE(detail->voidedBanner()->isVisible());
    EXPECT_TRUE(visibleTexts(detail->voidedBanner()).contains("Voided — not counted in any total"));
    const QString voidedDetails = detail->voidedDetails()->text();
    EXPECT_TRUE(voidedDetails.startsWith("Esi (approved by Akosua) · Mar 9, 2026 10:0"))
        << voidedDetails.toStdString();
    EXPECT_TRUE(voidedDetails.endsWith("\nReason: rung up twice")) << voidedDetails.toStdString();
    EXPECT_TRUE(detail->voidButton()->isHidden());
    const QModelIndex voided = history.listModel().index(history.listModel().rowOf(sales[1]->id()));
    EXPECT_EQ(voided.data(SalesListModel::badgeRole).toString(), "Voided");
    EXPECT_TRUE(voided.data(SalesListModel::isVoidedRole).toBool());
}

TEST_F(SalesHistoryViewTest, FiltersNarrowTheListAndTheChosenSaleStaysInView)
{
    SalesHistoryView& history = openHistory(UserRole::admin, 2);
    EXPECT_EQ(invoices(history).size(), 3) << "an admin sees everyone's";
    ASSERT_TRUE(history.selectSale(sales[0]->id()));

    QTest::keyClicks(history.searchField(), "akos");
    EXPECT_EQ(invoices(history), QStringList{sales[2]->invoiceNumber()});
    ASSERT_NE(history.detail(), nullptr);
    EXPECT_EQ(history.detail()->sale(), sales[0]) << "chosen, though no longer listed";

    history.searchField()->clear();
    history.toField()->setDate(QDate(2026, 3, 8));
    EXPECT_TRUE(history.isShowingNoSales());
    EXPECT_TRUE(visibleTexts(&history).contains("No transactions"));
    history.toField()->setDate(QDate(2026, 3, 9));
    EXPECT_FALSE(history.isShowingNoSales());
    EXPECT_EQ(history.listModel().rowOf(sales[0]->id()), 2) << "marked again in the list";

    const Ref<Sale> refund = environment.salesService().writeRefund(
        sales[0], {{sales[0]->items().first(), 1}}, QStringLiteral("x"), user, nullptr,
        PaymentMethodType::cash, *session.settings());
    EXPECT_EQ(invoices(history).first(), refund->invoiceNumber()) << "a refund is listed like a sale";
    EXPECT_EQ(history.listModel().index(0).data(SalesListModel::badgeRole).toString(), "Refunded");
    EXPECT_EQ(
        history.detail()->voidNote()->text(),
        "Part of this sale has already been refunded, so it can't be voided. Use Refunds for the rest.");
    EXPECT_FALSE(history.detail()->voidButton()->isEnabled());
}

// The receipt screen on its own, with a receipt printer that remembers what it printed.
TEST(ReceiptViewTest, ShowsTheSaleAsItPrintsAndPrintsItThroughTheReceiptPrinter)
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
    SalesScene scene(store.context());
    Cart cart;
    cart.addOrIncrement(scene.product({.name = "Soap", .price = 10}), 1);
    const Ref<Sale> sale = environment.salesService().checkout(
        cart, SalesScene::paidBy(cart, *session.settings()), nullptr, nullptr, *session.settings());

    QWidget parent;
    ReceiptView* view = ReceiptView::present(*sale, environment, session, &parent);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->windowTitle(), "Receipt " + sale->invoiceNumber());
    EXPECT_EQ(view->preview()->receipt().invoiceNumber, sale->invoiceNumber());
    view->primaryButton()->click();
    ASSERT_EQ(printed.printed.size(), 1);
    EXPECT_EQ(printed.printed[0].receipt.invoiceNumber, sale->invoiceNumber());
    EXPECT_TRUE(printed.printed[0].useThermalWidth);
}
