#include "ui/suppliers/suppliersview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"
#include "ui/products/producteditform.h"
#include "ui/products/productsview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {
class SuppliersScreenTest : public ScreenTest {
protected:
    SuppliersView& openSuppliers()
    {
        signIn(UserRole::admin);
        view = &goTo<SuppliersView>(QStringLiteral("Suppliers"));
        return *view;
    }

    void type(QLineEdit* edit, const QString& text) const
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    SuppliersView* view = nullptr;
};
} // namespace

TEST_F(SuppliersScreenTest, ASupplierMadeHereIsSavedAndOfferedForProducts)
{
    using Field = SuppliersView::Field;
    openSuppliers();
    QTest::mouseClick(view->newSupplierButton(), Qt::LeftButton);
    ASSERT_EQ(QApplication::focusWidget(), view->field(Field::name));
    EXPECT_EQ(view->field(Field::name)->selectedText(), "New Supplier");

    QTest::keyClick(view->field(Field::name), Qt::Key_Backspace);
    view->saveButton()->click();
    EXPECT_EQ(view->formErrorLabel()->text(), "Enter a supplier name.");

    QTest::keyClicks(view->field(Field::name), "Akosua Trading");
    type(view->field(Field::phone), QStringLiteral("024 555 0101"));
    type(view->field(Field::email), QStringLiteral("orders@akosua.com"));
    view->note(SuppliersView::Note::address)->setFocus();
    QTest::keyClicks(view->note(SuppliersView::Note::address), "Makola Market, Accra");
    view->saveButton()->click();
    EXPECT_FALSE(view->formErrorLabel()->isVisible());

    const Ref<Supplier> akosua = view->model().selectedSupplier();
    ASSERT_NE(akosua, nullptr);
    EXPECT_FALSE(akosua->hasChanges()) << "saved";
    EXPECT_EQ(akosua->name(), "Akosua Trading");
    EXPECT_EQ(akosua->phone(), "024 555 0101");
    EXPECT_EQ(akosua->email(), "orders@akosua.com");
    EXPECT_EQ(akosua->address(), "Makola Market, Accra");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 1);
    EXPECT_EQ(view->listedNames(), QStringList{"Akosua Trading"});

    QTest::keyClicks(view->searchField(), "555");
    EXPECT_EQ(view->listedNames(), QStringList{"Akosua Trading"});
    QTest::keyClicks(view->searchField(), "9");
    EXPECT_TRUE(view->listedNames().isEmpty());

    // The product form offers active suppliers only.
    window->actionBus().setRequestedSection(AppSection::products);
    auto* products = qobject_cast<ProductsView*>(screen<MainNavigationView>()->currentScreen());
    ASSERT_NE(products, nullptr);
    QTest::mouseClick(products->newProductButton(), Qt::LeftButton);
    QComboBox* picker = products->form()->picker(ProductEditForm::Picker::supplier);
    EXPECT_NE(picker->findText("Akosua Trading"), -1);

    window->actionBus().setRequestedSection(AppSection::suppliers);
    view->searchField()->clear();
    QTest::mouseClick(view->activeSwitch(), Qt::LeftButton, {},
                      QPoint(8, view->activeSwitch()->height() / 2));
    view->saveButton()->click();
    EXPECT_FALSE(akosua->isActive());
    EXPECT_EQ(picker->findText("Akosua Trading"), -1);
}

TEST_F(SuppliersScreenTest, DeleteAsksFirstAndKeepsNothingBehind)
{
    openSuppliers();
    QTest::mouseClick(view->newSupplierButton(), Qt::LeftButton);
    view->deleteButton()->click();
    auto* confirm = view->findChild<QMessageBox*>();
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete this supplier?");
    EXPECT_EQ(confirm->informativeText(), "Products and purchase orders keep the supplier's name.");
    for (QAbstractButton* button : confirm->buttons())
        if (button->text() == "Delete")
            button->click();
    EXPECT_EQ(view->model().selectedSupplier(), nullptr);
    EXPECT_TRUE(view->listedNames().isEmpty());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 0);
}
