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

#include "support/faultloop.h"

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
    ASSERT_NE(akosua, nullptr) << "saved";
    EXPECT_FALSE(akosua->hasChanges());
    EXPECT_EQ(akosua->name(), "Akosua Trading");
    EXPECT_EQ(akosua->phone(), "024 555 0101");
    EXPECT_EQ(akosua->email(), "orders@akosua.com");
    EXPECT_EQ(akosua->address(), "Makola Market, Accra");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 1);
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
    EXPECT_FALSE(view->deleteButton()->isVisibleTo(view)) << "nothing in the store to delete yet";
    view->saveButton()->click();
    ASSERT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 1);
    ASSERT_TRUE(view->deleteButton()->isVisibleTo(view));
    view->deleteButton()->click();
    QMessageBox* confirm = openBox(view);
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete this supplier?");
    clickButton(confirm, "Delete");
    EXPECT_EQ(view->model().editedSupplier(), nullptr);
    EXPECT_TRUE(view->listedNames().isEmpty());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Supplier")), 0);
}

TEST_F(SuppliersScreenTest, ChoosingAnotherSupplierAsksAboutUnsavedEdits)
{
    openSuppliers();
    for (const char* name : {"Acme", "Bolt"}) {
        QTest::mouseClick(view->newSupplierButton(), Qt::LeftButton);
        QTest::keyClicks(view->field(SuppliersView::Field::name), name);
        view->saveButton()->click();
    }
    ASSERT_EQ(view->listedNames(), (QStringList{"Acme", "Bolt"}));
    type(view->field(SuppliersView::Field::phone), QStringLiteral("020 111"));
    view->list()->setCurrentRow(0);
    QMessageBox* box = openBox(view);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Save changes to Bolt?");
    EXPECT_EQ(view->model().editedSupplier()->name(), "Bolt") << "nothing changes before the answer";
    EXPECT_EQ(view->list()->currentRow(), 1);
    clickButton(box, "Don't Save");
    EXPECT_EQ(view->model().editedSupplier()->name(), "Acme");
    EXPECT_EQ(view->field(SuppliersView::Field::phone)->text(), "");
    EXPECT_EQ(view->list()->currentRow(), 0);
    EXPECT_FALSE(dumpStoreFile(store.path()).contains("020 111"));
}
