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
    InventoryView& openView()
    {
        session.setCurrentUser(addUser(store.context(), {.role = UserRole::admin}));
        view = std::make_unique<InventoryView>(store.context(), inventory, session);
        view->resize(1100, 700);
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
        return *view;
    }

    StockAdjustmentSheet* openSheet(const Ref<Product>& product)
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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

    TestStore store;
    InventoryService inventory{store.context()};
    SessionStore session;
    std::unique_ptr<InventoryView> view;
};
} // namespace

// The sums, the average cost and the refusals are the service's and the sheet model's.
TEST_F(InventoryViewTest, ADeliveryAndAStockOutThroughTheSheetShowInTheDetailAndTheList)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 10, .cost = 2});
    openView();
    StockAdjustmentSheet* sheet = openSheet(soap);
    ASSERT_NE(sheet, nullptr);
    QTest::keyClicks(sheet->quantityField(), "5");
    sheet->unitCostField()->selectAll();
    QTest::keyClicks(sheet->unitCostField(), "3");
    EXPECT_TRUE(sheet->costPreviewLabel()->isVisible()) << "the preview follows the typing";
    QTest::mouseClick(sheet->applyButton(), Qt::LeftButton);
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(view->detail()->onHandLabel()->text(), "15");
    EXPECT_EQ(view->stockValueLabel()->text(), "₵35.00");
    EXPECT_EQ(history(0, MovementHistoryModel::costLineRole), "Delivered at ₵3.00 · cost ₵2.00 → ₵2.33");

    sheet = openSheet(soap);
    QTest::mouseClick(sheet->modePicker()->segment(1), Qt::LeftButton);
    EXPECT_FALSE(sheet->unitCostField()->isVisibleTo(sheet)) << "a cost belongs to a delivery only";
    QTest::keyClicks(sheet->quantityField(), "1.5");
    QTest::keyClick(sheet->quantityField(), Qt::Key_Return);
    EXPECT_TRUE(sheet->errorLabel()->isVisible());
    sheet->quantityField()->selectAll();
    QTest::keyClicks(sheet->quantityField(), "20");
    EXPECT_FALSE(sheet->errorLabel()->isVisible()) << "the refusal was about the text before";
    QTest::keyClicks(sheet->reasonField(), "Broken");
    QTest::keyClick(sheet->reasonField(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible()) << "Return applies";
    EXPECT_EQ(history(0, MovementHistoryModel::stockAfterRole), "Stock after -5");
    EXPECT_EQ(view->productList()->model()->index(0, 2).data().toString(), "-5");
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("InventoryMovement")), 2);
}

TEST_F(InventoryViewTest, HistoryLoadsAPageAtATimeAsItIsScrolled)
{
    const Ref<Product> soap = addProduct(store.context(), {.stock = 120});
    for (int i = 0; i < 120; ++i) {
        auto movement = std::make_shared<InventoryMovement>();
        movement->setProduct(soap);
        movement->setType(InventoryMovementType::stockIn);
        movement->setReason(QStringLiteral("Count %1").arg(i));
        movement->setTimestamp(QDateTime(QDate(2026, 3, 2), QTime(9, 0)).addSecs(60 * i));
        store.context().insert(movement);
    }
    store.context().save();
    openView();
    ASSERT_TRUE(view->selectProduct(soap->id()));
    MovementHistoryModel& model = view->detail()->history();
    EXPECT_EQ(model.rowCount(), 50);
    for (const int expected : {100, 120}) {
        view->detail()->historyView()->scrollToBottom();
        QCoreApplication::processEvents();
        EXPECT_EQ(model.rowCount(), expected);
    }
    EXPECT_TRUE(history(119, MovementHistoryModel::detailRole).endsWith("Count 0"));
    EXPECT_FALSE(model.canFetchMore({}));
}

TEST_F(InventoryViewTest, TheScreenFollowsChangesMadeElsewhereEvenWhileHidden)
{
    addProduct(store.context(), {.name = QStringLiteral("Haircut"), .type = "service"});
    openView();
    EXPECT_TRUE(view->isShowingNoItems()) << "a service has no stock to count";
    const Ref<Product> soap = addProduct(store.context(), {.stock = 8, .cost = 1});
    EXPECT_FALSE(view->isShowingNoItems());
    ASSERT_TRUE(view->selectProduct(soap->id()));
    view->hide();
    inventory.stockOut(soap, 3, QStringLiteral("Sold"), nullptr);
    view->show();
    EXPECT_EQ(view->detail()->onHandLabel()->text(), "5");
    EXPECT_EQ(view->detail()->history().rowCount(), 1);
    EXPECT_EQ(view->stockValueLabel()->text(), "₵5.00");
}
