#include "ui/products/productsview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/recordrowmodel.h"
#include "ui/controls/screentest.h"
#include "ui/products/categoriessheet.h"
#include "ui/products/newcategorysheet.h"
#include "ui/products/producteditform.h"

#include "money/taxsetup.h"
#include "stock/stockbuilders.h"
#include "store/sqlite.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include <sqlite3.h>

namespace {
using Field = ProductEditForm::Field;

class ProductsScreenTest : public ScreenTest {
protected:
    ProductsView& openProducts()
    {
        signIn(UserRole::admin);
        return *(view = &goTo<ProductsView>(QStringLiteral("Products")));
    }

    ProductEditForm& form() const { return *view->form(); }

    void type(Field which, const QString& text) const
    {
        form().field(which)->selectAll();
        QTest::keyClicks(form().field(which), text);
    }

    // Walks the closed picker with the arrow keys to the item.
    static void choose(QComboBox* combo, const QString& text)
    {
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        for (int i = 0; i < combo->count() && combo->currentText() != text; ++i)
            QTest::keyClick(combo, Qt::Key_Down);
        ASSERT_EQ(combo->currentText(), text);
    }

    ProductsView* view = nullptr;
};
} // namespace

// Each kind of control reaches the product; the rules behind them are the view model's.
TEST_F(ProductsScreenTest, AProductIsMadeThroughTheFormAndARefusalShowsOnIt)
{
    openProducts();
    QTest::mouseClick(view->newProductButton(), Qt::LeftButton);
    EXPECT_EQ(form().field(Field::name)->selectedText(), "New Product");
    QTest::keyClicks(form().field(Field::name), "Rice 5kg");
    choose(form().picker(ProductEditForm::Picker::unit), QStringLiteral("Kilogram (kg)"));
    type(Field::sellingPrice, QStringLiteral("45O"));
    EXPECT_TRUE(form().fieldErrorLabel(Field::sellingPrice)->isVisible());
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    EXPECT_TRUE(form().errorLabel()->isVisible());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 0);

    type(Field::sellingPrice, QStringLiteral("1,018"));
    QTest::mouseClick(form().newCategoryButton(), Qt::LeftButton);
    auto* sheet = form().findChild<NewCategorySheet*>();
    ASSERT_NE(sheet, nullptr);
    QTest::keyClicks(sheet->nameField(), "Grains");
    choose(sheet->colorPicker(), QStringLiteral("Green"));
    sheet->createButton()->click();
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    const Ref<Product> rice = view->model().selectedProduct();
    ASSERT_NE(rice, nullptr);
    EXPECT_EQ(rice->sellingUnit(), SellingUnit::kg);
    EXPECT_EQ(rice->sellingPrice(), 1018);
    EXPECT_EQ(rice->category()->colorHex(), "#34C759");
    EXPECT_EQ(view->list()->currentIndex().data().toString(), "Rice 5kg") << "listed and chosen once saved";
    view->newProductMenu()->actions().at(2)->trigger();
    EXPECT_EQ(view->model().editedProduct()->productType(), ProductType::service) << "the menu's third type";
}

TEST_F(ProductsScreenTest, FiltersReachTheListAndDeleteAsksFirst)
{
    addProduct(store.context(), {.name = QStringLiteral("Cola"), .stock = 2});
    addProduct(store.context(), {.name = QStringLiteral("Malt"), .stock = 40});
    addProduct(store.context(), {.name = QStringLiteral("Haircut"), .type = "service"});
    openProducts();
    choose(view->typeFilter(), QStringLiteral("Services"));
    EXPECT_EQ(view->listedNames(), QStringList{"Haircut"});
    choose(view->typeFilter(), QStringLiteral("All Types"));
    QTest::keyClicks(view->searchField(), "l");
    EXPECT_EQ(view->listedNames(), (QStringList{"Cola", "Malt"}));
    // On the box itself: a switch stretched across its column has nothing at its middle.
    QTest::mouseClick(view->lowStockToggle(), Qt::LeftButton, {}, QPoint(8, view->lowStockToggle()->height() / 2));
    EXPECT_EQ(view->listedNames(), QStringList{"Cola"});

    view->selectRow(0);
    QTest::mouseClick(form().deleteButton(), Qt::LeftButton);
    QMessageBox* confirm = openBox(&form());
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete this product?");
    clickButton(confirm, "Delete");
    EXPECT_EQ(view->form(), nullptr);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 2);
}

// The rules are the view model's; here the sheet is wired to it and the screen follows its changes.
TEST_F(ProductsScreenTest, CategoriesAreRenamedAndDeletedFromTheirSheet)
{
    auto drinks = std::make_shared<Category>();
    drinks->setName(QStringLiteral("Drinks"));
    auto grains = std::make_shared<Category>();
    grains->setName(QStringLiteral("Grains"));
    store.saved(drinks);
    store.saved(grains);
    const Ref<Product> cola = addProduct(store.context(), {.name = QStringLiteral("Cola")});
    cola->setCategory(drinks);
    store.context().save();
    openProducts();
    view->categoriesButton()->click();
    CategoriesSheet* sheet = view->categoriesSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->rows().names(), (QStringList{"Drinks", "Grains"}));
    EXPECT_EQ(sheet->rows().index(0).data(RecordRowDelegate::detailRole).toString(), "1 product");
    EXPECT_FALSE(sheet->renameButton()->isEnabled()) << "nothing chosen yet";

    sheet->chooseRow(0);
    EXPECT_EQ(sheet->nameField()->text(), "Drinks");
    sheet->nameField()->selectAll();
    QTest::keyClicks(sheet->nameField(), "grains");
    sheet->renameButton()->click();
    EXPECT_TRUE(sheet->errorLabel()->isVisible());
    sheet->nameField()->selectAll();
    QTest::keyClicks(sheet->nameField(), "Cold Drinks");
    QTest::keyClick(sheet->nameField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->errorLabel()->isVisible());
    EXPECT_EQ(sheet->rows().names(), (QStringList{"Cold Drinks", "Grains"}));
    EXPECT_EQ(sheet->list()->currentIndex().row(), 0) << "still chosen after the rename";
    EXPECT_GE(view->categoryFilter()->findText("Cold Drinks"), 0) << "the screen's filter follows";

    sheet->deleteButton()->click();
    QMessageBox* confirm = openBox(sheet);
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete “Cold Drinks”?");
    EXPECT_EQ(confirm->informativeText(), "Its 1 product stays in Products, with no category.");
    clickButton(confirm, "Delete");
    EXPECT_EQ(sheet->rows().names(), QStringList{"Grains"});
    EXPECT_FALSE(sheet->deleteButton()->isEnabled());
    EXPECT_EQ(cola->category(), nullptr);
    EXPECT_EQ(view->listedNames(), QStringList{"Cola"}) << "the product stays";
    sheet->primaryButton()->click();
    EXPECT_EQ(view->categoriesSheet(), nullptr);
}

// With the store unreadable, choosing another product once ended in terminate().
TEST_F(ProductsScreenTest, AStoreThatFailsUnderAnyClickEndsInAMessage)
{
    const Ref<Category> drinks = store.saved(std::make_shared<Category>());
    for (const char* name : {"Cola", "Malt"})
        addProduct(store.context(), {.name = QString::fromUtf8(name), .cost = 2})->setCategory(drinks);
    store.context().save();
    TaxSetup::ensure(store.context(), nullptr);
    openProducts();
    const std::function<void()> clicks[] = {
        [&] {
            const Ref<Product> chosen = view->model().selectedProduct();
            view->selectRow(chosen && chosen->name() == "Cola" ? 1 : 0);
        },
        [&] { view->newProductButton()->click(); },
    };
    int fired = 0;
    for (const auto& click : clicks) {
        for (int nth = 1; nth <= 30; ++nth) {
            SCOPED_TRACE(nth);
            SqliteConnection::injectFault(nth, SQLITE_IOERR_READ);
            EXPECT_NO_THROW(click());
            const bool hit = SqliteConnection::faultFired();
            SqliteConnection::clearFault();
            if (hit) {
                ++fired;
                EXPECT_TRUE(view->errorLabel()->isVisible() || (view->form() && view->form()->errorLabel()->isVisible()));
            }
        }
    }
    EXPECT_GT(fired, 0);
}
