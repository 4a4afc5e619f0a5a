#include "ui/customers/customersview.h"

#include "ui/access/approvalsheet.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/screentest.h"
#include "ui/customers/adjustpointssheet.h"
#include "ui/customers/customerdetail.h"
#include "ui/customers/customerlistmodel.h"
#include "ui/customers/openingbalancesheet.h"
#include "ui/customers/receiveaccountpaymentsheet.h"
#include "ui/till/tillview.h"

#include "customers/accountbuilders.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QTableWidget>
#include <QLineEdit>
#include <QPushButton>

namespace {
// The sheet `button` opens over the window, once shown.
template <class Sheet> Sheet* openSheet(QWidget* window, QPushButton* button)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    button->click();
    auto* sheet = window->findChild<Sheet*>();
    if (sheet) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(sheet));
    }
    return sheet;
}

// Credit, points by hand and deleting wait for an admin's PIN when a cashier asks.
class CustomersViewTest : public ScreenTest {
protected:
    Ref<User> admin = addUser(store.context(), {.username = QStringLiteral("akosua"), .pin = QStringLiteral("4321"),
                                                .role = UserRole::admin, .name = QStringLiteral("Akosua")});

    // The admin types their PIN into the approval dialog open over `over`.
    void approve(const QWidget* over)
    {
        auto* approval = over->findChild<ApprovalSheet*>();
        ASSERT_NE(approval, nullptr) << "a cashier's change went through without an admin";
        QTest::keyClicks(approval->pinField(), "4321");
        approval->primaryButton()->click();
        EXPECT_FALSE(approval->isVisible()) << approval->errorLabel()->text().toStdString();
    }
};
} // namespace

// A cashier, since Customers isn't only for admins. The rules and texts are the detail model's.
TEST_F(CustomersViewTest, ANewCustomerIsSavedThenPaysCashIntoTheOpenTillAndAdjustsPoints)
{
    signIn();
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    QTest::mouseClick(view.newCustomerButton(), Qt::LeftButton);
    CustomerDetail* detail = view.detail();
    ASSERT_NE(detail, nullptr);
    EXPECT_EQ(detail->field(CustomerDetail::Field::name)->selectedText(), "New Customer");
    QTest::keyClicks(focused(), "Ama Mensah");
    detail->allowCreditSwitch()->click();
    QLineEdit* limit = detail->field(CustomerDetail::Field::creditLimit);
    limit->selectAll();
    QTest::keyClicks(limit, "abc");
    EXPECT_TRUE(detail->creditLimitErrorLabel()->isVisible());
    limit->selectAll();
    QTest::keyClicks(limit, "500");
    QTest::keyClick(limit, Qt::Key_Return);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0) << "credit is an admin's";
    approve(detail);
    ASSERT_EQ(view.customerRows().rowCount(), 1);
    EXPECT_EQ(view.customerList()->currentIndex().row(), 0) << "listed and chosen once saved";
    const Ref<Customer> ama = detail->customer();
    EXPECT_EQ(ama->creditLimit(), 500);

    session.setCurrentTillShift(environment.tillService().openShift(user, 50));
    addSale(store.context(), {.invoice = "INV-7", .customer = ama, .tenders = {{PaymentMethodType::onAccount, 120}}});
    EXPECT_EQ(detail->balanceOwedLabel()->text(), "₵120.00") << "follows a sale made elsewhere";
    auto* payment = openSheet<ReceiveAccountPaymentSheet>(window.get(), detail->receivePaymentButton());
    ASSERT_NE(payment, nullptr);
    payment->amountField()->selectAll();
    QTest::keyClicks(payment->amountField(), "45");
    QTest::keyClick(payment->amountField(), Qt::Key_Return);
    EXPECT_FALSE(payment->isVisible());
    EXPECT_EQ(detail->accountHistory()->rowCount(), 2);
    EXPECT_EQ(view.customerRows().index(0).data(RecordRowDelegate::detailRole).toString(), "Owes ₵75.00");

    auto* points = openSheet<AdjustPointsSheet>(window.get(), detail->adjustPointsButton());
    ASSERT_NE(points, nullptr);
    QTest::keyClicks(points->pointsField(), "4");
    QTest::keyClicks(points->reasonField(), "welcome");
    QTest::keyClick(points->pointsField(), Qt::Key_Return);
    approve(detail);
    EXPECT_EQ(detail->pointsBalanceLabel()->text(), "4");
    EXPECT_EQ(detail->pointsHistory()->rowCount(), 1);

    EXPECT_EQ(goTo<TillView>(QStringLiteral("Till & Shifts")).expectedCashFigure()->text(), "₵95.00");
}

TEST_F(CustomersViewTest, DeleteAsksWithReturnMeaningCancelAndPurchasesComeAPageAtATime)
{
    const Ref<Customer> ama = addCustomer(store.context(), {.name = QStringLiteral("Ama")});
    const int pageSize = CustomerDetailModel::purchasePageSize;
    for (int index = 0; index <= pageSize; ++index)
        addSale(store.context(), {.invoice = QStringLiteral("INV-%1").arg(index),
                                  .customer = ama,
                                  .at = localAt(2025, 1, 1).addSecs(60 * index),
                                  .tenders = {{PaymentMethodType::cash, 10}}});
    signIn();
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    ASSERT_TRUE(view.selectCustomer(ama->id()));
    CustomerDetail& detail = *view.detail();
    ASSERT_EQ(detail.purchases()->rowCount(), pageSize);
    detail.morePurchasesButton()->click();
    EXPECT_EQ(detail.purchases()->rowCount(), pageSize + 1);
    EXPECT_FALSE(detail.morePurchasesButton()->isVisible());

    detail.deleteButton()->click();
    QMessageBox* box = openBox(&detail);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->informativeText(), detail.model().deleteWarnings().join("\n\n"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(box));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 1) << "Return means Cancel";
    detail.deleteButton()->click();
    clickButton(openBox(&detail), "Delete");
    approve(&detail);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0);
    EXPECT_TRUE(view.isShowingNoCustomers());
}

// A cashier carries a customer's debt over from the credit book: the field refuses what isn't an
// amount, an admin approves, and the account owes it from the day chosen, with no cash in the till.
TEST_F(CustomersViewTest, AnOpeningBalanceOwesFromItsDayOnceAnAdminApproves)
{
    const Ref<Customer> ama = addCustomer(store.context(), {.name = QStringLiteral("Ama")});
    signIn();
    session.setCurrentTillShift(environment.tillService().openShift(user, 50));
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    ASSERT_TRUE(view.selectCustomer(ama->id()));
    CustomerDetail& detail = *view.detail();
    ASSERT_TRUE(detail.openingBalanceButton()->isVisible());

    auto* sheet = openSheet<OpeningBalanceSheet>(window.get(), detail.openingBalanceButton());
    ASSERT_NE(sheet, nullptr);
    QTest::keyClicks(sheet->amountField(), "12O");
    EXPECT_TRUE(sheet->amountErrorLabel()->isVisible());
    QTest::keyClick(sheet->amountField(), Qt::Key_Return);
    EXPECT_EQ(detail.findChild<ApprovalSheet*>(), nullptr) << "no admin called over for a typing slip";
    EXPECT_EQ(sheet->owedSinceField()->maximumDate(), QDate::currentDate());
    sheet->amountField()->selectAll();
    QTest::keyClicks(sheet->amountField(), "1,250.00");
    EXPECT_FALSE(sheet->amountErrorLabel()->isVisible());
    sheet->owedSinceField()->setDate(QDate::currentDate().addDays(-40));
    QTest::keyClick(sheet->amountField(), Qt::Key_Return);
    approve(&detail);

    EXPECT_EQ(detail.balanceOwedLabel()->text(), "₵1,250.00");
    ASSERT_EQ(detail.accountHistory()->rowCount(), 1);
    EXPECT_EQ(detail.accountHistory()->item(0, 1)->text(), "Opening balance");
    EXPECT_TRUE(detail.ageLabel()->text().contains(QStringLiteral("31–60\u00a0days\u00a0₵1,250.00")))
        << detail.ageLabel()->text().toStdString();
    EXPECT_FALSE(detail.openingBalanceButton()->isVisible()) << "one a customer";
    EXPECT_EQ(view.customerRows().index(0).data(RecordRowDelegate::detailRole).toString(), "Owes ₵1,250.00");
    EXPECT_EQ(goTo<TillView>(QStringLiteral("Till & Shifts")).expectedCashFigure()->text(), "₵50.00");
}
