#include "ui/pos/posworkspaceview.h"

#include "pos/posviewmodel.h"
#include "records/category.h"
#include "records/heldsale.h"
#include "ui/appointments/appointmenteditor.h"
#include "ui/appointments/appointmentsview.h"
#include "ui/pos/cartlinerow.h"
#include "ui/pos/cartpanelview.h"
#include "ui/pos/heldsalesview.h"
#include "ui/pos/paymentsheetview.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/pos/quantityentrysheet.h"
#include "ui/receipts/receiptview.h"
#include "ui/access/approvalsheet.h"
#include "records/auditentry.h"
#include "records/payment.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "ui/salesscreentest.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace {

// The counter as a cashier meets it: a till open, soap and a rice sack on the shelf.
class WorkspaceTest : public SalesScreenTest {
protected:
    POSWorkspaceView& openCounter()
    {
        signIn(UserRole::cashier);
        session.setCurrentTillShift(environment.tillService().openShift(user, 100));
        return goTo<POSWorkspaceView>(QStringLiteral("POS Workspace"));
    }

    Ref<Product> withCodes(Ref<Product> product, const char* barcode, const char* sku)
    {
        product->setBarcode(QString::fromUtf8(barcode));
        product->setSku(QString::fromUtf8(sku));
        store.context().save();
        return product;
    }

    // A scanner: a keyboard that types the code and ends with Return, into whatever has the keys.
    static void scan(const QString& code)
    {
        QTest::keyClicks(focused(), code);
        QTest::keyClick(focused(), Qt::Key_Return);
    }

    static QStringList cartNames(const POSWorkspaceView& counter)
    {
        QStringList names;
        for (const CartLineRow* row : counter.cartPanel()->rows())
            names << row->nameLabel()->text();
        return names;
    }
};

} // namespace

TEST_F(WorkspaceTest, ScansTypedIntoTheKeyboardReachTheCartAndTheFieldKeepsTheKeys)
{
    withCodes(soap, "6001", "SOAP-1");
    withCodes(scene.product({.name = "Bread", .price = 8}), "6002", "BRD");
    POSWorkspaceView& counter = openCounter();
    ASSERT_FALSE(counter.isShowingTillClosed());
    EXPECT_EQ(focused(), counter.searchField()) << "the keys rest in the scan field";

    scan(QStringLiteral("6001"));
    scan(QStringLiteral("brd")) /* a SKU in any case */;
    scan(QStringLiteral("6001"));
    EXPECT_EQ(cartNames(counter), (QStringList{"Soap", "Bread"}));
    EXPECT_EQ(counter.cartPanel()->row(counter.model().cart().lines()[0].id)->quantityLabel()->text(),
              QStringLiteral("2 × ₵10.00"));
    EXPECT_EQ(counter.cartPanel()->totalLabel()->text(), QStringLiteral("₵28.00"));
    EXPECT_TRUE(counter.searchField()->text().isEmpty());
    EXPECT_EQ(focused(), counter.searchField());

    // A chip narrows the grid and stays chosen as the grid changes under it.
    auto bread = store.context().fetchFirst<Product>(FetchDescriptor(Product::Col::name == QStringLiteral("Bread")));
    auto bakery = std::make_shared<Category>();
    bakery->setName(QStringLiteral("Bakery"));
    scene.saved(bakery);
    bread->setCategory(bakery);
    store.context().save();
    ASSERT_EQ(counter.categoryChips().size(), 2);
    QTest::mouseClick(counter.categoryChips()[1], Qt::LeftButton);
    EXPECT_EQ(counter.grid()->model()->rowCount(), 1);
    EXPECT_TRUE(counter.categoryChips()[1]->isChecked());
    QTest::mouseClick(counter.categoryChips()[0], Qt::LeftButton);

    // A code nobody has stays in the field; the grid says nothing matches.
    scan(QStringLiteral("999"));
    EXPECT_EQ(counter.searchField()->text(), QStringLiteral("999"));
    EXPECT_TRUE(counter.isShowingNoProducts());
    EXPECT_EQ(counter.model().cart().lines().size(), 2);

    // The arrows walk the lines; the keys for the chosen line act on it.
    counter.searchField()->clear();
    QTest::keyClick(counter.searchField(), Qt::Key_Up);
    EXPECT_EQ(counter.cartPanel()->selectedLineID(), counter.model().cart().lines()[0].id);
    QTest::keyClick(counter.searchField(), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(cartNames(counter), QStringList{"Bread"});
    EXPECT_EQ(focused(), counter.searchField());
}

TEST_F(WorkspaceTest, TheTillClosedStateAndTheSaleShortcutsOnlyOnTheCounter)
{
    signIn(UserRole::cashier);
    auto& counter = goTo<POSWorkspaceView>(QStringLiteral("POS Workspace"));
    EXPECT_TRUE(counter.isShowingTillClosed());
    session.setCurrentTillShift(environment.tillService().openShift(user, 100));
    EXPECT_FALSE(counter.isShowingTillClosed());

    counter.model().addToCart(soap);
    goTo<QWidget>(QStringLiteral("Customers"));
    QTest::keyClick(focused(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(counter.model().cart().lines().size(), 1) << "New Sale does nothing off the counter";
    goTo<POSWorkspaceView>(QStringLiteral("POS Workspace"));
    EXPECT_EQ(cartNames(counter), QStringList{"Soap"}) << "the cart waited";
    QTest::keyClick(focused(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(counter.model().cart().lines().isEmpty());
    EXPECT_TRUE(counter.cartPanel()->rows().isEmpty());
}

TEST_F(WorkspaceTest, HoldAndRecallFromTheKeyboardAskBeforeReplacingACart)
{
    POSWorkspaceView& counter = openCounter();
    counter.model().addToCart(soap);
    QTest::keyClick(focused(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(counter.model().cart().lines().isEmpty());
    EXPECT_EQ(counter.cartPanel()->heldSalesButton()->text(), QStringLiteral("Held Sales (1)"));
    EXPECT_EQ(focused(), counter.searchField());

    counter.model().addToCart(soap);
    counter.model().addToCart(soap);
    QTest::keyClick(focused(), Qt::Key_R, Qt::ControlModifier);
    auto* held = qobject_cast<HeldSalesView*>(counter.openSheet());
    ASSERT_NE(held, nullptr);
    ASSERT_EQ(held->recallButtons().size(), 1);
    held->recallButtons()[0]->click();
    QMessageBox* replace = openBox(counter.window());
    ASSERT_NE(replace, nullptr);
    EXPECT_TRUE(replace->text().contains("discard the 2 item(s)"));
    clickButton(replace, QStringLiteral("Replace Cart"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(counter.model().cart().itemCount(), 1);
    EXPECT_EQ(counter.openSheet(), nullptr) << "the list goes once the sale is back";
    EXPECT_EQ(counter.cartPanel()->heldSalesButton()->text(), QStringLiteral("Held Sales (0)"));
    EXPECT_EQ(focused(), counter.searchField());
}

TEST_F(WorkspaceTest, RingUpTakesABookingToTheCounterOnlyIntoAnEmptyCart)
{
    auto settings = environment.loadOrCreateSettings();
    settings->setAppointmentsEnabled(true);
    store.context().save();
    const Ref<Product> cut = scene.product({.name = "Haircut", .price = 40, .stock = 0, .type = ProductType::service});
    auto booking = std::make_shared<Appointment>();
    booking->setStart(QDateTime(now.date(), QTime(9, 0)));
    booking->setDurationMinutes(30);
    booking->setServiceID(cut->id());
    booking->setServiceName(cut->name());
    booking->setCustomerName(QStringLiteral("Yaw"));
    scene.saved(booking);

    POSWorkspaceView& counter = openCounter();
    counter.model().addToCart(soap);
    auto& book = goTo<AppointmentsView>(QStringLiteral("Appointments"));
    book.list()->setCurrentIndex(book.list()->model()->index(0, 0));
    ASSERT_NE(book.editor(), nullptr);
    ASSERT_TRUE(book.editor()->ringUpButton()->isVisible());
    book.editor()->ringUpButton()->click();
    QMessageBox* refusal = openBox(book.window());
    ASSERT_NE(refusal, nullptr);
    EXPECT_EQ(refusal->text(), QStringLiteral("Finish or hold the sale in progress first, then Ring Up the appointment."));
    clickButton(refusal, QStringLiteral("OK"));
    EXPECT_EQ(cartNames(counter), QStringList{"Soap"});

    counter.model().cancelSale();
    book.editor()->ringUpButton()->click();
    auto* navigation = screen<MainNavigationView>();
    EXPECT_EQ(navigation->currentScreen(), &counter) << "the counter takes over";
    EXPECT_EQ(cartNames(counter), QStringList{"Haircut"});
}

// A whole sale as a cashier rings it up: three scans and a weighing by keyboard, the customer, a
// discount an admin approves with her PIN, part mobile money and part cash with change.
TEST_F(WorkspaceTest, ASaleFromTheKeyboardToTheStore)
{
    withCodes(soap, "6001", "SOAP");
    withCodes(scene.product({.name = "Bread", .price = 8}), "6002", "BRD");
    withCodes(scene.product({.name = "Milk", .price = 12}), "6003", "MLK");
    const Ref<Product> rice =
        withCodes(scene.product({.name = "Rice", .price = 18, .stock = 100, .unit = SellingUnit::kg}), "6004", "RCE");
    const Ref<Customer> kofi = scene.customer("Kofi Mensah");
    POSWorkspaceView& counter = openCounter();

    for (const char* code : {"6001", "6002", "6003", "6004"})
        scan(QString::fromLatin1(code));
    auto* weighing = qobject_cast<QuantityEntrySheet*>(counter.openSheet());
    ASSERT_NE(weighing, nullptr) << "rice is sold by weight";
    QTest::keyClicks(weighing->amountField(), QStringLiteral("1,5"));
    QTest::keyClick(weighing->amountField(), Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(cartNames(counter), (QStringList{"Soap", "Bread", "Milk", "Rice"}));
    EXPECT_EQ(counter.cartPanel()->totalLabel()->text(), QStringLiteral("₵57.00"));
    EXPECT_EQ(focused(), counter.searchField());

    QTest::keyClick(focused(), Qt::Key_K, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitForWindowActive(QApplication::activePopupWidget()));
    QTest::keyClicks(focused(), QStringLiteral("kofi"));
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(counter.model().cart().customer(), kofi);

    // 20 off 57 is over a cashier's 10%: it waits for Akosua's PIN.
    QTest::keyClick(counter.searchField(), Qt::Key_D, Qt::ControlModifier);
    QTest::keyClicks(focused(), QStringLiteral("20"));
    QTest::keyClick(focused(), Qt::Key_Return);
    auto* approval = qobject_cast<ApprovalSheet*>(QApplication::activeModalWidget());
    ASSERT_NE(approval, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(approval));
    EXPECT_EQ(counter.model().cart().saleDiscount(), 0) << "nothing off until approved";
    QTest::keyClicks(approval->pinField(), QStringLiteral("4321"));
    QTest::keyClick(approval->pinField(), Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(counter.model().cart().saleDiscount(), 20);
    EXPECT_EQ(counter.cartPanel()->totalLabel()->text(), QStringLiteral("₵37.00"));

    QTest::keyClick(focused(), Qt::Key_Return, Qt::ControlModifier);
    auto* payment = qobject_cast<PaymentSheetView*>(counter.openSheet());
    ASSERT_NE(payment, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(payment));
    scan(QStringLiteral("6001"));
    EXPECT_EQ(counter.model().cart().lines().size(), 4) << "a scan never reaches the cart behind the sheet";
    EXPECT_EQ(counter.openSheet(), payment) << "nor completes the sale";
    QTest::mouseClick(payment->modePicker()->segment(4), Qt::LeftButton);
    QTest::mouseClick(payment->addPaymentMethodButton(), Qt::LeftButton);
    QTest::mouseClick(payment->addPaymentMethodButton(), Qt::LeftButton);
    ASSERT_EQ(payment->splitRowWidgets().size(), 2);
    const auto mobile = payment->splitRowWidgets()[0];
    mobile.method->setCurrentIndex(mobile.method->findText(QStringLiteral("Mobile Money")));
    // A person's keys, not a scanner's burst, which the sheet would refuse.
    QTest::keyClicks(payment->splitRowWidgets()[0].amount, QStringLiteral("20"), Qt::NoModifier, 30);
    const auto cash = payment->splitRowWidgets()[1];
    QTest::keyClicks(cash.amount, QStringLiteral("17"), Qt::NoModifier, 30);
    QTest::keyClicks(cash.tendered, QStringLiteral("20"), Qt::NoModifier, 30);
    // Pressed only: the sheet is gone before the key comes up.
    QTest::qWait(30);
    QTest::keyPress(cash.tendered, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    auto* receipt = qobject_cast<ReceiptView*>(counter.openSheet());
    ASSERT_NE(receipt, nullptr) << "the receipt sheet follows the sale";
    EXPECT_TRUE(counter.model().cart().lines().isEmpty());
    const QList<Ref<Sale>> sales = store.context().fetch<Sale>();
    ASSERT_EQ(sales.size(), 1);
    const Ref<Sale>& sale = sales.first();
    EXPECT_FALSE(sale->invoiceNumber().isEmpty());
    EXPECT_DOUBLE_EQ(sale->total(), 37);
    EXPECT_EQ(sale->customer(), kofi);
    EXPECT_EQ(sale->items().size(), 4);
    EXPECT_DOUBLE_EQ(rice->stockQuantity(), 98.5);
    EXPECT_DOUBLE_EQ(soap->stockQuantity(), 49);
    QStringList paid;
    for (const Ref<Payment>& tender : sale->payments())
        paid << QStringLiteral("%1 %2 change %3")
                    .arg(PaymentMethodTypes::label(tender->method()))
                    .arg(tender->amount())
                    .arg(tender->changeGiven());
    paid.sort();
    EXPECT_EQ(paid, (QStringList{"Cash 17 change 3", "Mobile Money 20 change 0"}));
    EXPECT_EQ(kofi->loyaltyPoints(), 3) << "one point for each ₵10 spent";
    const QList<Ref<AuditEntry>> discount =
        store.context().fetch<AuditEntry>(AuditEntry::Col::actionRaw == QStringLiteral("discount"));
    ASSERT_EQ(discount.size(), 1);
    EXPECT_EQ(discount.first()->approverName(), QStringLiteral("Akosua"));
    EXPECT_EQ(discount.first()->reference(), sale->invoiceNumber());

    // The next customer's first scan makes the receipt give way instead of printing it again.
    QTest::keyClicks(receipt, QStringLiteral("6002"));
    QTest::keyPress(receipt, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(counter.openSheet(), nullptr);
    EXPECT_EQ(cartNames(counter), QStringList{"Bread"});
    // The window's own focus: the test platform doesn't give the window back its activation.
    EXPECT_EQ(counter.window()->focusWidget(), counter.searchField()) << "ready for the next item";
}
