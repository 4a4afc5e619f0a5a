#pragma once

#include "records/product.h"

#include <QPointer>
#include <QWidget>

class InventoryServicing;
class InventoryViewModel;
class ModelContext;
class MovementHistoryModel;
class QLabel;
class QListView;
class QPushButton;
class QStackedWidget;
class SessionStore;
class StockAdjustmentSheet;

// One product's stock: the figures, the button that opens the adjustment sheet, and the movement
// history, newest first and a page at a time.
class ProductInventoryDetail : public QWidget {
    Q_OBJECT

public:
    ProductInventoryDetail(InventoryViewModel& model, ModelContext& context, InventoryServicing& inventory,
                           SessionStore& session, QWidget* parent = nullptr);

    Ref<Product> product() const { return m_product; }
    void setProduct(const Ref<Product>& product);
    // Reads the figures again and the history from its newest row.
    void refresh();

    QLabel* nameLabel() const { return m_name; }
    QLabel* onHandLabel() const { return m_onHand; }
    QLabel* reorderLevelLabel() const { return m_reorderLevel; }
    QLabel* stockValueLabel() const { return m_stockValue; }
    // The average cost the stock value is counted at.
    QLabel* averageCostLabel() const { return m_averageCost; }
    QPushButton* adjustButton() const { return m_adjust; }
    QListView* historyView() const { return m_historyView; }
    MovementHistoryModel& history() const { return *m_history; }
    bool isShowingNoMovements() const;
    // The sheet that is open, if any.
    StockAdjustmentSheet* adjustmentSheet() const;

private:
    void openAdjustmentSheet();

    ModelContext& m_context;
    InventoryServicing& m_inventory;
    SessionStore& m_session;
    Ref<Product> m_product;
    MovementHistoryModel* m_history;
    QLabel* m_name;
    QLabel* m_sku;
    QLabel* m_onHand;
    QLabel* m_lowStock;
    QLabel* m_reorderLevel;
    QLabel* m_stockValue;
    QLabel* m_averageCost;
    QPushButton* m_adjust;
    QStackedWidget* m_historyPages;
    QListView* m_historyView;
    QWidget* m_noMovements;
    QPointer<StockAdjustmentSheet> m_sheet;
};
