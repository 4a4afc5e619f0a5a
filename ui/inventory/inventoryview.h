#pragma once

#include "stock/inventoryviewmodel.h"

#include <QUuid>
#include <QWidget>

class DetailPages;
class InventoryServicing;
class ListDetailBody;
class ProductInventoryDetail;
class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTableView;
class SearchListPane;
class SessionStore;

// The "Inventory" section: the stock-tracked products with the store's stock value and low-stock
// count, and the chosen product's stock beside them. Follows every saved change to products and
// movements, whoever made it.
class InventoryView : public QWidget {
    Q_OBJECT

public:
    InventoryView(ModelContext& context, InventoryServicing& inventory, SessionStore& session,
                  QWidget* parent = nullptr);

    InventoryViewModel& model() { return m_model; }
    QLineEdit* searchField() const { return m_search; }
    QTableView* productList() const { return m_list; }
    QLabel* stockValueLabel() const { return m_stockValue; }
    QLabel* lowStockLabel() const { return m_lowStock; }
    ProductInventoryDetail* detail() const { return m_detail; }
    // Which of the screen's states is on show.
    bool isShowingNoItems() const;
    bool isShowingDetail() const;
    // Chooses the product in the list, as a click would; false when it isn't listed.
    bool selectProduct(const QUuid& productID);

private:
    void refresh();
    void refreshSummary();
    void refreshList();
    void showSelection();
    QString currencySymbol() const;

    InventoryViewModel m_model;
    SessionStore& m_session;
    QList<Ref<Product>> m_products; // the list's rows, in order
    QUuid m_selectedID;
    bool m_rebuilding = false;

    QLabel* m_stockValue;
    QLabel* m_lowStock;
    QLineEdit* m_search;
    QStandardItemModel* m_rows;
    QTableView* m_list;
    SearchListPane* m_listPane;
    DetailPages* m_detailPages;
    ListDetailBody* m_body;
    ProductInventoryDetail* m_detail;
};
