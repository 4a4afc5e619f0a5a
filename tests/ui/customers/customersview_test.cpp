#include "ui/customers/customersview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/screentest.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/customers/adjustpointssheet.h"
#include "ui/customers/customerdetail.h"
#include "ui/customers/receiveaccountpaymentsheet.h"
#include "ui/till/tillview.h"

#include "customers/accountbuilders.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

namespace {
// Signed in as a cashier, since Customers isn't only for admins.
class CustomersViewTest : public ScreenTest {
protected:
    // The customer shown in the detail, ready for a sheet of the detail to open over it.
    CustomerDetail& showCustomer(const Ref<Customer>& customer)
    {
        auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
        EXPECT_TRUE(view.selectCustomer(customer->id()));
        return *view.detail();
    }

    template <class Sheet> Sheet* openSheet(QPushButton* button)
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        button->click();
        auto* sheet = window->findChild<Sheet*>();
        if (sheet) {
            EXPECT_TRUE(QTest::qWaitForWindowActive(sheet));
        }
        return sheet;
    }
};
} // namespace

TEST_F(CustomersViewTest, ANewCustomerIsMadeOnSaveThenPaysCashIntoTheOpenTill)
{
    signIn();
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    EXPECT_TRUE(view.isShowingNoCustomers());

    QTest::mouseClick(view.newCustomerButton(), Qt::LeftButton);
    CustomerDetail* detail = view.detail();
    ASSERT_NE(detail, nullptr);
    QLineEdit* name = detail->field(CustomerDetail::Field::name);
    EXPECT_EQ(focused(), name);
    EXPECT_EQ(name->selectedText(), "New Customer") << "typing replaces the placeholder name";
    QTest::keyClicks(name, "Ama Mensah");
    detail->allowCreditSwitch()->click();
    EXPECT_FALSE(detail->adjustPointsButton()->isEnabled()) << "points need the customer saved";
    QLineEdit* limit = detail->field(CustomerDetail::Field::creditLimit);
    limit->selectAll();
    QTest::keyClicks(limit, "abc");
    EXPECT_TRUE(detail->creditLimitErrorLabel()->isVisible());
    EXPECT_TRUE(detail->isVisible()) << "the first customer is typed beside an empty list";

    // Signing out asks about the new customer; a limit that isn't an amount keeps the person here.
    screen<MainNavigationView>()->signOutButton()->click();
    QMessageBox* box = openBox(&view);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Save changes to Ama Mensah?");
    clickButton(box, "Save");
    EXPECT_NE(session.currentUser(), nullptr);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0);

    limit->selectAll();
    QTest::keyClicks(limit, "500");
    EXPECT_FALSE(detail->creditLimitErrorLabel()->isVisible());
    QTest::keyClick(limit, Qt::Key_Return);
    ASSERT_EQ(view.customerList()->rowCount(), 1);
    EXPECT_EQ(view.customerList()->item(0, 0)->text(), "Ama Mensah");
    EXPECT_EQ(view.customerList()->currentRow(), 0) << "listed and chosen once saved";
    EXPECT_EQ(limit->text(), "500.00");
    EXPECT_TRUE(detail->adjustPointsButton()->isEnabled());
    const Ref<Customer> ama = detail->customer();
    EXPECT_TRUE(ama->allowCredit());
    EXPECT_EQ(ama->creditLimit(), 500);
    EXPECT_FALSE(detail->receivePaymentButton()->isEnabled()) << "nothing owed yet";

    const Ref<TillShift> shift = environment.tillService().openShift(user, 50);
    session.setCurrentTillShift(shift);
    addSale(store.context(),
            {.invoice = "INV-7", .customer = ama, .tenders = {{PaymentMethodType::onAccount, 120}}});
    EXPECT_EQ(view.customerList()->item(0, 0)->data(RecordRowDelegate::detailRole).toString(), "Owes ₵120.00");
    EXPECT_EQ(detail->balanceOwedLabel()->text(), "₵120.00");
    EXPECT_EQ(detail->availableCreditLabel()->text(), "₵380.00");

    auto* sheet = openSheet<ReceiveAccountPaymentSheet>(detail->receivePaymentButton());
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->tillNoteLabel()->isVisible());
    sheet->amountField()->selectAll();
    QTest::keyClicks(sheet->amountField(), "45");
    QTest::keyClick(sheet->amountField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible());

    ASSERT_EQ(detail->accountHistory()->rowCount(), 2);
    EXPECT_EQ(rowTexts(*detail->accountHistory(), 1).mid(1),
              (QStringList{"Payment received — Cash", "", "₵45.00", "₵75.00"}));
    EXPECT_EQ(view.customerList()->item(0, 0)->data(RecordRowDelegate::detailRole).toString(), "Owes ₵75.00");
    auto& till = goTo<TillView>(QStringLiteral("Till & Shifts"));
    EXPECT_EQ(till.accountCashFigure()->text(), "₵45.00");
    EXPECT_EQ(till.expectedCashFigure()->text(), "₵95.00");
}

TEST_F(CustomersViewTest, PointsAdjustedByHandShowInTheHistory)
{
    const Ref<Customer> kofi = addCustomer(store.context(), {.name = QStringLiteral("Kofi"), .points = 10});
    signIn();
    CustomerDetail& detail = showCustomer(kofi);
    EXPECT_EQ(detail.pointsBalanceLabel()->text(), "10");

    auto* sheet = openSheet<AdjustPointsSheet>(detail.adjustPointsButton());
    ASSERT_NE(sheet, nullptr);
    QTest::mouseClick(sheet->directionPicker()->segment(1), Qt::LeftButton);
    QTest::keyClicks(sheet->pointsField(), "4");
    EXPECT_EQ(sheet->newBalanceLabel()->text(), "New balance: 6 points");
    QTest::keyClicks(sheet->reasonField(), "correction");
    QTest::keyClick(sheet->pointsField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(detail.pointsBalanceLabel()->text(), "6");
    ASSERT_EQ(detail.pointsHistory()->rowCount(), 1);
    EXPECT_EQ(rowTexts(*detail.pointsHistory(), 0).mid(1), (QStringList{"Adjustment — correction", "-4", "6"}));
}

TEST_F(CustomersViewTest, DeletingWarnsInFullAndCancelKeepsTheCustomer)
{
    const Ref<Customer> yaa = addCustomer(store.context(), {.name = QStringLiteral("Yaa")});
    addSale(store.context(),
            {.invoice = QStringLiteral("INV-1"), .customer = yaa, .tenders = {{PaymentMethodType::onAccount, 20}}});
    signIn();
    CustomerDetail& detail = showCustomer(yaa);
    EXPECT_EQ(rowTexts(*detail.purchases(), 0).mid(1), (QStringList{"INV-1", "₵20.00", ""}));

    const auto askToDelete = [&] {
        detail.deleteButton()->click();
        return openBox(&detail);
    };
    QMessageBox* box = askToDelete();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Delete this customer?");
    EXPECT_EQ(box->informativeText(), detail.model().deleteWarnings().join("\n\n"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(box));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 1) << "Return means Cancel";

    clickButton(askToDelete(), "Delete");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Customer")), 0);
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    EXPECT_EQ(view.detail(), nullptr);
    EXPECT_TRUE(view.isShowingNoCustomers());
}

TEST_F(CustomersViewTest, SearchNarrowsTheListAndPurchasesComeAPageAtATime)
{
    const Ref<Customer> ama = addCustomer(store.context(), {.name = QStringLiteral("Ama")});
    const Ref<Customer> kofi = addCustomer(store.context(), {.name = QStringLiteral("Kofi")});
    kofi->setPhone(QStringLiteral("024 555 0101"));
    store.context().save();
    const int pageSize = CustomerDetailModel::purchasePageSize;
    for (int index = 0; index <= pageSize; ++index) {
        const Ref<Sale> sale = addSale(store.context(), {.invoice = QStringLiteral("INV-%1").arg(index),
                                                         .customer = ama,
                                                         .at = localAt(2025, 1, 1).addSecs(60 * index),
                                                         .tenders = {{PaymentMethodType::cash, 10}}});
        if (index == pageSize)
            sale->setStatus(SaleStatus::voided);
    }
    store.context().save();
    signIn();
    CustomerDetail& detail = showCustomer(ama);
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));

    ASSERT_EQ(detail.purchases()->rowCount(), pageSize);
    EXPECT_EQ(rowTexts(*detail.purchases(), 0).mid(1), (QStringList{"INV-50", "₵10.00", "Voided"}));
    ASSERT_TRUE(detail.morePurchasesButton()->isVisible());
    detail.morePurchasesButton()->click();
    EXPECT_EQ(detail.purchases()->rowCount(), pageSize + 1);
    EXPECT_FALSE(detail.morePurchasesButton()->isVisible());

    QTest::keyClicks(view.searchField(), "555");
    ASSERT_EQ(view.customerList()->rowCount(), 1);
    EXPECT_EQ(view.customerList()->item(0, 0)->text(), "Kofi");
    EXPECT_EQ(view.detail(), &detail) << "a search doesn't drop the customer being looked at";
    QTest::keyClicks(view.searchField(), "9");
    EXPECT_EQ(view.customerList()->rowCount(), 0);
    EXPECT_FALSE(view.isShowingNoCustomers()) << "the store has customers; the search found none";
}

TEST_F(CustomersViewTest, LeavingUnsavedEditsAsksToSaveDiscardOrStay)
{
    const Ref<Customer> ama = addCustomer(store.context(), {.name = QStringLiteral("Ama")});
    const Ref<Customer> kofi = addCustomer(store.context(), {.name = QStringLiteral("Kofi")});
    signIn();
    auto& view = goTo<CustomersView>(QStringLiteral("Customers"));
    const auto editPhone = [&](const QString& phone) {
        QLineEdit* field = view.detail()->field(CustomerDetail::Field::phone);
        field->selectAll();
        QTest::keyClicks(field, phone);
    };
    // Chooses the other customer and answers the question with the button titled `answer`.
    const auto leaveFor = [&](const Ref<Customer>& other, const QString& answer) {
        view.selectCustomer(other->id());
        QMessageBox* box = openBox(&view);
        EXPECT_EQ(view.detail()->customer(), other == ama ? kofi : ama)
            << "nothing changes before the answer";
        clickButton(box, answer);
    };

    ASSERT_TRUE(view.selectCustomer(ama->id()));
    editPhone(QStringLiteral("024 111"));
    leaveFor(kofi, QStringLiteral("Cancel"));
    EXPECT_EQ(view.detail()->customer(), ama);
    EXPECT_EQ(view.detail()->field(CustomerDetail::Field::phone)->text(), "024 111") << "the edit stays";
    EXPECT_EQ(view.customerList()->currentRow(), 0);

    leaveFor(kofi, QStringLiteral("Save"));
    EXPECT_EQ(view.detail()->customer(), kofi);
    EXPECT_EQ(ama->phone(), "024 111");
    EXPECT_EQ(view.customerList()->currentRow(), 1);

    editPhone(QStringLiteral("020 999"));
    leaveFor(ama, QStringLiteral("Don't Save"));
    EXPECT_EQ(view.detail()->customer(), ama);
    EXPECT_EQ(kofi->phone(), "");
    EXPECT_EQ(view.detail()->field(CustomerDetail::Field::phone)->text(), "024 111");

    // Without edits nothing is asked.
    view.selectCustomer(kofi->id());
    EXPECT_EQ(openBox(&view), nullptr);
    EXPECT_EQ(view.detail()->customer(), kofi);
}
