#pragma once

#include "records/inventorymovement.h"
#include "records/product.h"

#include <QAbstractListModel>

class InventoryViewModel;

// A product's movement history for a list view, newest first. Rows come a page at a time as the
// view scrolls to the end: a product sold every day has thousands of them.
class MovementHistoryModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        typeRole = Qt::UserRole + 1,
        changeRole,     // signed, with the unit: "+5", "-2.5 kg"
        stockAfterRole, // "Stock after 12"
        detailRole,     // when, from whom and why, on one line
        costLineRole,   // absent unless a delivery's cost was booked
        directionRole,  // 1 in, -1 out, 0 for a change of cost alone
    };

    explicit MovementHistoryModel(InventoryViewModel& inventory, QObject* parent = nullptr);

    Ref<Product> product() const { return m_product; }
    // Shows the newest page of this product's history; null shows nothing.
    void setProduct(const Ref<Product>& product);
    // Starts again from the newest row, after the history changed.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    InventoryViewModel& m_inventory;
    Ref<Product> m_product;
    QList<Ref<InventoryMovement>> m_rows;
    bool m_atEnd = true;
};
