#pragma once

#include "stock/productsviewmodel.h"
#include "ui/controls/keypagedmodel.h"

#include <QAbstractListModel>

using ProductPages = KeyPagedModel<QAbstractListModel, ProductListRow>;

// The catalogue's rows for the list, a page at a time as it scrolls, in the roles of
// ProductListDelegate. The product on the form shows what is being typed in place of its saved row.
class ProductListModel : public ProductPages {
    Q_OBJECT

public:
    explicit ProductListModel(ProductsViewModel& products, QObject* parent = nullptr);

    // The row of the product, loading pages until it is found; -1 when the list doesn't hold it.
    int rowOf(const QUuid& productID);
    QUuid productID(int row) const { return rows().value(row).id; }
    // The row to show in place of its saved one, or none.
    void showEdited(const std::optional<ProductListRow>& edited);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QList<ProductListRow> readPage(const ProductListRow* after, int limit) override;

private:
    ProductsViewModel& m_products;
    std::optional<ProductListRow> m_edited;
};
