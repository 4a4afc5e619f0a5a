#pragma once

#include "stock/productsviewmodel.h"

#include <QStyledItemDelegate>

// Draws one product of the list: name and price on top; the type's badge, "Inactive", SKU and
// category below, with the stock on the right. Painted rather than built of widgets, so that a
// catalogue of thousands scrolls and refreshes at once.
class ProductListDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    // The name is the display text; the rest rides in these roles (ProductListModel).
    enum Role {
        idRole = Qt::UserRole + 1,
        skuRole,
        categoryRole,
        priceRole,
        stockRole,
        badgeRole,
        inactiveRole,
    };

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
