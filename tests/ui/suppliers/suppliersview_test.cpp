#include "ui/suppliers/suppliersview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"
#include "ui/products/producteditform.h"
#include "ui/products/productsview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using SuppliersScreenTest = ScreenTest;

// The refusals and the search rules are the suppliers model's; here the form is wired to it.
TEST_F(SuppliersScreenTest, ASupplierMadeHereIsOfferedForProductsUntilSwitchedOffAndDeleteAsksFirst)
{
    using Field = SuppliersView::Field;
    signIn(UserRole::admin);
    auto* view = &goTo<SuppliersView>(QStringLiteral("Suppliers"));
    QTest::mouseClick(view->newSupplierButton(), Qt::LeftButton);
    EXPECT_FALSE(view->deleteButton()->isVisibleTo(view)) << "nothing in the store to delete yet";
    QTest::keyClick(view->field(Field::name), Qt::Key_Backspace);
    view->saveButton()->click();
    EXPECT_TRUE(view->formErrorLabel()->isVisible());

    QTest::keyClicks(view->field(Field::name), "Akosua Trading");
    QTest::keyClicks(view->field(Field::phone), "024 555 0101");
    QTest::keyClicks(view->note(SuppliersView::Note::address), "Makola Market, Accra");
    view->saveButton()->click();
    const Ref<Supplier> akosua = view->model().selectedSupplier();
    ASSERT_NE(akosua, nullptr) << "saved";
    EXPECT_EQ(akosua->phone(), "024 555 0101");
    EXPECT_EQ(akosua->address(), "Makola Market, Accra");
    EXPECT_EQ(view->listedNames(), QStringList{"Akosua Trading"});

    window->actionBus().setRequestedSection(AppSection::products);
    auto* products = qobject_cast<ProductsView*>(screen<MainNavigationView>()->currentScreen());
    ASSERT_NE(products, nullptr);
    QTest::mouseClick(products->newProductButton(), Qt::LeftButton);
    QComboBox* picker = products->form()->picker(ProductEditForm::Picker::supplier);
    EXPECT_NE(picker->findText("Akosua Trading"), -1);

    window->actionBus().setRequestedSection(AppSection::suppliers);
    QTest::mouseClick(view->activeSwitch(), Qt::LeftButton, {}, QPoint(8, view->activeSwitch()->height() / 2));
    view->saveButton()->click();
    EXPECT_EQ(picker->findText("Akosua Trading"), -1) << "the product form offers active suppliers only";

    view->deleteButton()->click();
    QMessageBox* confirm = openBox(view);
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete this supplier?");
    clickButton(confirm, "Delete");
    EXPECT_TRUE(view->listedNames().isEmpty());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 0);
}
