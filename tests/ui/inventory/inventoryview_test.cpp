#include "ui/inventory/inventoryview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/inventory/movementhistorymodel.h"
#include "ui/inventory/productinventorydetail.h"
#include "ui/inventory/stockadjustmentsheet.h"

#include "stock/inventoryservice.h"
#include "stock/stockbuilders.h"

#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTableView>

namespace {
class InventoryViewTest : public ::testing::Test {
protected:
    void SetUp() override { session.setCurrentUser(addUser(store.context(), {.role = UserRole::admin})); }

    InventoryView& openView()
    {
        view = std::make_unique<InventoryView>(store.context(), inventory, session);
        view->resize(1100, 700);
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
        return *view;
    }

    StockAdjustmentSheet* openSheet(const Ref<Product>& product)
    {
        EXPECT_TRUE(view->selectProduct(product->id()));
        view->detail()->adjustButton()->click();
        StockAdjustmentSheet* sheet = view->detail()->adjustmentSheet();
        if (sheet) {
            EXPECT_TRUE(QTest::qWaitForWindowExposed(sheet));
        }
        return sheet;
    }

    QString history(int row, MovementHistoryModel::Role role) const
    {
        const MovementHistoryModel& model = view->detail()->history();
        return model.data(model.index(row), role).toString();
    }

    qint64 movementsOnDisk() const
    {
        return countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement"));
    }

    TestStore store;
    InventoryService inventory{store.context()};
    SessionStore session;
    std::unique_ptr<InventoryView> view;
};
} // namespace

TEST_F(InventoryViewTest, DeliveryThroughTheSheetShowsItsRowAndTheNewAverageCost)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 10, .cost = 2});
    openView();
    StockAdjustmentSheet* sheet = openSheet(soap);
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->windowTitle(), "Adjust Stock — Soap");
    EXPECT_EQ(sheet->unitCostField()->text(), "2");

    QTest::keyClicks(sheet->quantityField(), "5");
    sheet->unitCostField()->selectAll();
    QTest::keyClicks(sheet->unitCostField(), "3");
    EXPECT_TRUE(sheet->costPreviewLabel()->isVisible()) << "the preview follows the typing";
    EXPECT_EQ(sheet->costPreviewLabel()->text(),
              "New average ₵2.33: 10 on hand at ₵2.00 + 5 delivered at ₵3.00.");
    QTest::keyClicks(sheet->supplierField(), "Acme");
    QTest::mouseClick(sheet->applyButton(), Qt::LeftButton);
    EXPECT_FALSE(sheet->isVisible());

    ProductInventoryDetail* detail = view->detail();
    EXPECT_EQ(detail->onHandLabel()->text(), "15");
    EXPECT_EQ(detail->stockValueLabel()->text(), "₵35.00");
    EXPECT_EQ(detail->averageCostLabel()->text(), "at ₵2.33 each");
    EXPECT_EQ(view->stockValueLabel()->text(), "₵35.00");
    ASSERT_EQ(detail->history().rowCount(), 1);
    EXPECT_EQ(history(0, MovementHistoryModel::typeRole), "Supplier Delivery");
    EXPECT_EQ(history(0, MovementHistoryModel::changeRole), "+5");
    EXPECT_EQ(history(0, MovementHistoryModel::stockAfterRole), "Stock after 15");
    EXPECT_EQ(history(0, MovementHistoryModel::costLineRole), "Delivered at ₵3.00 · cost ₵2.00 → ₵2.33");
    EXPECT_EQ(movementsOnDisk(), 1);
}

TEST_F(InventoryViewTest, StockOutRefusesAQuantityAtTheSheetAndMayTakeTheStockBelowZero)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 2, .cost = 1});
    soap->setReorderLevel(1);
    store.context().save();
    openView();
    EXPECT_EQ(view->lowStockLabel()->text(), "0");

    StockAdjustmentSheet* sheet = openSheet(soap);
    ASSERT_NE(sheet, nullptr);
    QTest::mouseClick(sheet->modePicker()->segment(1), Qt::LeftButton);
    EXPECT_FALSE(sheet->unitCostField()->isVisibleTo(sheet)) << "a cost belongs to a delivery only";
    EXPECT_FALSE(sheet->costPreviewLabel()->isVisibleTo(sheet));
    QTest::keyClicks(sheet->quantityField(), "1.5");
    QTest::keyClick(sheet->quantityField(), Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(sheet->errorLabel()->isVisible());
    EXPECT_EQ(movementsOnDisk(), 0);
    sheet->quantityField()->selectAll();
    QTest::keyClicks(sheet->quantityField(), "5");
    EXPECT_FALSE(sheet->errorLabel()->isVisible()) << "the refusal was about the text before";
    QTest::keyClicks(sheet->reasonField(), "Broken");
    QTest::keyClick(sheet->reasonField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible()) << "Return applies";

    EXPECT_EQ(view->detail()->onHandLabel()->text(), "-3");
    EXPECT_EQ(history(0, MovementHistoryModel::typeRole), "Stock Out");
    EXPECT_EQ(history(0, MovementHistoryModel::stockAfterRole), "Stock after -3");
    EXPECT_TRUE(history(0, MovementHistoryModel::detailRole).endsWith(" · Broken"));
    EXPECT_EQ(view->productList()->model()->index(0, 2).data().toString(), "-3");
    EXPECT_EQ(view->lowStockLabel()->text(), "1");
}

TEST_F(InventoryViewTest, HistoryLoadsAPageAtATimeAsItIsScrolled)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 120});
    const QDateTime start(QDate(2026, 3, 2), QTime(9, 0));
    for (int i = 0; i < 120; ++i) {
        auto movement = std::make_shared<InventoryMovement>();
        movement->setProduct(soap);
        movement->setType(InventoryMovementType::stockIn);
        movement->setQuantityChange(1);
        movement->setStockAfter(i + 1);
        movement->setReason(QStringLiteral("Count %1").arg(i));
        movement->setTimestamp(start.addSecs(60 * i));
        store.context().insert(movement);
    }
    store.context().save();
    openView();
    ASSERT_TRUE(view->selectProduct(soap->id()));
    MovementHistoryModel& model = view->detail()->history();
    EXPECT_EQ(model.rowCount(), 50);
    EXPECT_TRUE(history(0, MovementHistoryModel::detailRole).endsWith("Count 119"));

    QListView* list = view->detail()->historyView();
    for (const int expected : {100, 120}) {
        list->scrollToBottom();
        QCoreApplication::processEvents();
        EXPECT_EQ(model.rowCount(), expected);
    }
    EXPECT_TRUE(history(119, MovementHistoryModel::detailRole).endsWith("Count 0"));
    EXPECT_FALSE(model.canFetchMore({}));
}

TEST_F(InventoryViewTest, EmptyStatesSayWhatIsMissingAndGoOnceThereIsSomething)
{
    addProduct(store.context(), {.name = QStringLiteral("Haircut"), .type = "service"});
    openView();
    EXPECT_TRUE(view->isShowingNoItems()) << "a service has no stock to count";

    // Saved elsewhere: the screen follows the store.
    const Ref<Product> soap = addProduct(store.context());
    EXPECT_FALSE(view->isShowingNoItems());
    EXPECT_EQ(view->productList()->model()->rowCount(), 1);
    EXPECT_TRUE(visibleTexts(view.get()).contains("Select a product"));

    QTest::keyClicks(view->searchField(), "zz");
    EXPECT_FALSE(view->productList()->isVisibleTo(view.get()));
    EXPECT_TRUE(visibleTexts(view.get()).contains("No products match “zz”."));
    view->searchField()->clear();

    ASSERT_TRUE(view->selectProduct(soap->id()));
    EXPECT_TRUE(view->isShowingDetail());
    EXPECT_TRUE(view->detail()->isShowingNoMovements());
}

TEST_F(InventoryViewTest, ChangesMadeWhileHiddenShowOnReturn)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 8, .cost = 1});
    openView();
    ASSERT_TRUE(view->selectProduct(soap->id()));
    view->hide();

    // A sale at the till while another section is on screen.
    inventory.stockOut(soap, 3, QStringLiteral("Sold"), nullptr);
    view->show();
    EXPECT_EQ(view->detail()->onHandLabel()->text(), "5");
    EXPECT_EQ(view->detail()->history().rowCount(), 1);
    EXPECT_EQ(view->stockValueLabel()->text(), "₵5.00");
}
