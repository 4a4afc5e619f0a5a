#include "ui/products/productsview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"
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
using Picker = ProductEditForm::Picker;
using Toggle = ProductEditForm::Toggle;

class ProductsScreenTest : public ScreenTest {
protected:
    ProductsView& openProducts()
    {
        signIn(UserRole::admin);
        view = &goTo<ProductsView>(QStringLiteral("Products"));
        return *view;
    }

    ProductEditForm& form() const
    {
        EXPECT_NE(view->form(), nullptr);
        return *view->form();
    }

    // Replaces the field's text as someone at the keyboard would.
    void type(Field which, const QString& text) const
    {
        QLineEdit* edit = form().field(which);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
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

    // On the box itself: a switch stretched across its column has nothing at its middle.
    static void click(QCheckBox* box)
    {
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }

    void selectProduct(const QString& name) const
    {
        const int row = int(view->listedNames().indexOf(name));
        ASSERT_GE(row, 0) << name.toStdString();
        view->selectRow(row);
        ASSERT_EQ(form().product()->name(), name);
    }

    ProductsView* view = nullptr;
};
} // namespace

// Each field reaches the product it is bound to; the rules behind them are the view model's.
TEST_F(ProductsScreenTest, AProductOfEachTypeIsMadeThroughTheForm)
{
    openProducts();
    EXPECT_TRUE(visibleTexts(view).contains("No products"));

    // A plain click makes the default type, an inventory item, in a category made on the spot.
    QTest::mouseClick(view->newProductButton(), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), form().field(Field::name));
    EXPECT_EQ(form().field(Field::name)->selectedText(), "New Product");
    QTest::keyClicks(form().field(Field::name), " Rice 5kg ");
    type(Field::sku, QStringLiteral("RC-5"));
    type(Field::barcode, QStringLiteral("6001234"));
    choose(form().picker(Picker::unit), QStringLiteral("Kilogram (kg)"));
    EXPECT_TRUE(visibleTexts(&form()).contains("Cost Price (per kg)"));
    type(Field::costPrice, QStringLiteral("12.5"));
    type(Field::sellingPrice, QStringLiteral("1,018"));
    type(Field::reorderLevel, QStringLiteral("3,5"));
    QTest::mouseClick(form().newCategoryButton(), Qt::LeftButton);
    auto* sheet = form().findChild<NewCategorySheet*>();
    ASSERT_NE(sheet, nullptr);
    sheet->createButton()->click();
    EXPECT_TRUE(sheet->errorLabel()->isVisible()) << "a category needs a name";
    QTest::keyClicks(sheet->nameField(), "Grains");
    choose(sheet->colorPicker(), QStringLiteral("Green"));
    sheet->createButton()->click();
    EXPECT_EQ(form().picker(Picker::category)->currentText(), "Grains");
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    EXPECT_FALSE(form().errorLabel()->isVisible());

    const Ref<Product> rice = view->model().selectedProduct();
    ASSERT_NE(rice, nullptr) << "saved";
    EXPECT_EQ(rice->name(), "Rice 5kg");
    EXPECT_EQ(rice->productType(), ProductType::inventory);
    EXPECT_EQ(rice->sku(), "RC-5");
    EXPECT_EQ(rice->barcode(), "6001234");
    EXPECT_EQ(rice->sellingUnit(), SellingUnit::kg);
    EXPECT_EQ(rice->costPrice(), 12.5);
    EXPECT_EQ(rice->sellingPrice(), 1018);
    EXPECT_EQ(rice->reorderLevel(), 3.5);
    ASSERT_NE(rice->category(), nullptr);
    EXPECT_EQ(rice->category()->colorHex(), "#34C759");
    ASSERT_NE(view->list()->currentItem(), nullptr) << "listed and chosen once saved";
    EXPECT_EQ(view->list()->currentItem()->text(), "Rice 5kg");

    // From the menu: a non-inventory item without tax.
    view->newProductMenu()->actions().at(1)->trigger();
    EXPECT_EQ(form().field(Field::name)->text(), "New Non-Inventory Item");
    QTest::keyClicks(form().field(Field::name), "Gift Bag");
    type(Field::sellingPrice, QStringLiteral("2"));
    click(form().toggle(Toggle::taxable));
    EXPECT_TRUE(visibleTexts(&form()).contains("No tax is charged on this item."));
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    const Ref<Product> bag = view->model().selectedProduct();
    ASSERT_NE(bag, nullptr);
    EXPECT_EQ(bag->productType(), ProductType::nonInventory);
    EXPECT_FALSE(bag->isTaxable());
    EXPECT_EQ(bag->taxRate(), 0);

    // A service whose staff earn a rate of its own.
    view->newProductMenu()->actions().at(2)->trigger();
    QTest::keyClicks(form().field(Field::name), "Braiding");
    click(form().toggle(Toggle::askForStaff));
    type(Field::commission, QStringLiteral("12.5"));
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    const Ref<Product> braiding = view->model().selectedProduct();
    ASSERT_NE(braiding, nullptr);
    EXPECT_EQ(braiding->productType(), ProductType::service);
    EXPECT_TRUE(braiding->askForStaff());
    EXPECT_EQ(braiding->commissionRate(), 0.125);

    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 3);
    EXPECT_EQ(view->listedNames(), (QStringList{"Braiding", "Gift Bag", "Rice 5kg"}));
}

TEST_F(ProductsScreenTest, SaveShowsTheCostLineItWroteAndTextThatIsNoAmountIsRefusedAtTheField)
{
    addProduct(store.context(), {.name = QStringLiteral("Soap"), .stock = 8, .cost = 2});
    openProducts();
    selectProduct(QStringLiteral("Soap"));
    type(Field::costPrice, QStringLiteral("2.5"));
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), 1);
    EXPECT_TRUE(visibleTexts(&form()).contains("₵2.00 → ₵2.50"));

    type(Field::sellingPrice, QStringLiteral("45O"));
    EXPECT_TRUE(form().fieldErrorLabel(Field::sellingPrice)->isVisible());
    QTest::mouseClick(form().saveButton(), Qt::LeftButton);
    EXPECT_EQ(form().errorLabel()->text(), "Enter an amount such as 1,250.00.");
    EXPECT_EQ(view->model().selectedProduct()->sellingPrice(), 0);
    type(Field::sellingPrice, QStringLiteral("1,250"));
    EXPECT_FALSE(form().fieldErrorLabel(Field::sellingPrice)->isVisible());
    QTest::keyClick(form().field(Field::sellingPrice), Qt::Key_Tab);
    EXPECT_EQ(form().field(Field::sellingPrice)->text(), "1250.00") << "leaving shows the amount taken";
}

TEST_F(ProductsScreenTest, FiltersCombineAndDeleteAsksFirst)
{
    const struct {
        const char* name;
        double stock;
        bool active;
        const char* type;
    } products[] = {{"Cola", 2, true, "inventory"},
                    {"Malt", 2, false, "inventory"},
                    {"Water", 40, false, "inventory"},
                    {"Haircut", 0, false, "service"}};
    for (const auto& p : products) {
        const Ref<Product> product = addProduct(
            store.context(), {.name = QString::fromUtf8(p.name), .stock = p.stock, .type = p.type});
        product->setIsActive(p.active);
    }
    store.context().save();
    openProducts();
    EXPECT_EQ(view->listedNames(), (QStringList{"Cola", "Haircut", "Malt", "Water"}));

    click(view->lowStockToggle());
    click(view->inactiveToggle());
    EXPECT_EQ(view->listedNames(), QStringList{"Malt"});
    click(view->lowStockToggle());
    choose(view->typeFilter(), QStringLiteral("Services"));
    EXPECT_EQ(view->listedNames(), QStringList{"Haircut"});
    QTest::keyClicks(view->searchField(), "cola");
    EXPECT_TRUE(view->listedNames().isEmpty());
    EXPECT_TRUE(visibleTexts(view).contains("Add a product or clear your filters."));
    view->searchField()->clear();
    choose(view->typeFilter(), QStringLiteral("All Types"));
    EXPECT_EQ(view->listedNames(), (QStringList{"Haircut", "Malt", "Water"}));

    selectProduct(QStringLiteral("Malt"));
    QTest::mouseClick(form().deleteButton(), Qt::LeftButton);
    QMessageBox* confirm = openBox(&form());
    ASSERT_NE(confirm, nullptr);
    EXPECT_EQ(confirm->text(), "Delete this product?");
    clickButton(confirm, "Delete");
    EXPECT_EQ(view->form(), nullptr);
    EXPECT_TRUE(visibleTexts(view).contains("Select a product"));
    EXPECT_EQ(view->listedNames(), (QStringList{"Haircut", "Water"}));
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 3);
}

// With the store unreadable, choosing another product once ended in terminate().
TEST_F(ProductsScreenTest, AStoreThatFailsUnderAnyClickEndsInAMessage)
{
    const Ref<Category> drinks = std::make_shared<Category>();
    drinks->setName(QStringLiteral("Drinks"));
    store.context().insert(drinks);
    for (const char* name : {"Cola", "Malt", "Water"}) {
        const Ref<Product> product = addProduct(store.context(), {.name = QString::fromUtf8(name), .cost = 2});
        product->setCategory(drinks);
    }
    store.context().save();
    TaxSetup::ensure(store.context(), nullptr);
    openProducts();
    const auto anyMessageShown = [&] {
        return view->errorLabel()->isVisible() ||
               (view->form() && (view->form()->errorLabel()->isVisible()));
    };
    const std::function<void()> clicks[] = {
        // Listed as Cola, Malt, Water: Malt while Cola is chosen, else Cola.
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
                EXPECT_TRUE(anyMessageShown());
            }
        }
    }
    EXPECT_GT(fired, 0);
}
