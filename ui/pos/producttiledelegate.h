#pragma once

#include <QStyledItemDelegate>

// A tile of the counter's product grid: the name over two lines at most, the price, the category
// and kind, and what is left in stock, warning when it runs low. Painted, so that a grid of tens of
// thousands of products costs no widgets.
class ProductTileDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr QSize tileSize{184, 112};

    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
