#include "ui/pos/posworkspaceview.h"

#include "pos/posviewmodel.h"
#include "records/heldsale.h"
#include "ui/appointments/appointmenteditor.h"
#include "ui/appointments/appointmentsview.h"
#include "ui/pos/cartlinerow.h"
#include "ui/pos/cartpanelview.h"
#include "ui/pos/heldsalesview.h"
#include "ui/salesscreentest.h"

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
