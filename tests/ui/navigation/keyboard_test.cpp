#include "stock/stockbuilders.h"
#include "ui/controls/screentest.h"
#include "ui/navigation/mainnavigationview.h"
#include "ui/products/producteditform.h"
#include "ui/products/productsview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {
class KeyboardTest : public ScreenTest {
protected:
    MainNavigationView* navigation() const { return screen<MainNavigationView>(); }
    QString sectionOnShow() const { return AppSections::title(navigation()->model().selection().value()); }
};
} // namespace

// The keys follow the sidebar as this user sees it, so a cashier's Ctrl+1 is not an admin's.
TEST_F(KeyboardTest, CtrlDigitsOpenTheSidebarsSectionsInOrderAndCtrlFFindsOnProducts)
{
    addProduct(store.context(), {.name = QStringLiteral("Jasmine Rice")});
    signIn(UserRole::admin);
    const QList<AppSection> sections = navigation()->model().sections();
    ASSERT_GT(sections.size(), MainNavigationView::sectionKeyCount);
    for (int key = MainNavigationView::sectionKeyCount; key >= 1; --key) {
        QTest::keyClick(window.get(), Qt::Key(Qt::Key_0 + key), Qt::ControlModifier);
        EXPECT_EQ(sectionOnShow(), AppSections::title(sections[key - 1])) << "Ctrl+" << key;
        EXPECT_EQ(navigation()->sidebar()->currentRow(), key - 1);
    }

    auto& products = goTo<ProductsView>(QStringLiteral("Products"));
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), products.searchField());
    // Elsewhere Products' box is not lent out any more.
    QTest::keyClick(window.get(), Qt::Key_9, Qt::ControlModifier);
    QWidget* before = focused();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), before);

    // A cashier's sidebar is shorter: a key past its end does nothing.
    session.setCurrentUser(addUser(store.context(), {.username = QStringLiteral("kojo"), .name = "Kojo"}));
    const QList<AppSection> cashiers = navigation()->model().sections();
    QTest::keyClick(window.get(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(sectionOnShow(), AppSections::title(cashiers[1]));
    QTest::keyClick(window.get(), Qt::Key_9, Qt::ControlModifier);
    EXPECT_EQ(sectionOnShow(), AppSections::title(cashiers[1]));
}

// Made in another order than they read, the product form's fields were skipped by Tab.
TEST_F(KeyboardTest, TabWalksTheProductFormAsItReadsAndOnIntoTheSidebar)
{
    addProduct(store.context(), {.name = QStringLiteral("Jasmine Rice")});
    signIn(UserRole::admin);
    auto& products = goTo<ProductsView>(QStringLiteral("Products"));
    products.selectRow(0);
    ProductEditForm* form = products.form();
    using F = ProductEditForm;
    const QList<QWidget*> expected{form->field(F::Field::barcode),         form->toggle(F::Toggle::active),
                                   form->picker(F::Picker::category),      form->newCategoryButton(),
                                   form->picker(F::Picker::supplier),      form->newSupplierButton(),
                                   form->picker(F::Picker::unit),          form->field(F::Field::costPrice)};
    expected.first()->setFocus();
    for (qsizetype i = 1; i < expected.size(); ++i) {
        QTest::keyClick(focused(), Qt::Key_Tab);
        EXPECT_EQ(focused(), expected[i]) << "stop " << i;
    }
    QTest::keyClick(focused(), Qt::Key_Backtab);
    EXPECT_EQ(focused(), form->picker(F::Picker::unit));

    // Past the form's last stop, Tab leaves it, and the sidebar is somewhere along the way.
    bool reachedSidebar = false;
    for (int press = 0; press < 80 && !reachedSidebar; ++press) {
        QTest::keyClick(focused(), Qt::Key_Tab);
        reachedSidebar = focused() == navigation()->sidebar();
    }
    EXPECT_TRUE(reachedSidebar);
}
