#pragma once

#include <QStyledItemDelegate>

// A tile of the counter's product grid: the name over two lines at most, the price, the category
// and kind, and what is left in stock, warning when it runs low. Painted, so that a grid of tens of
// thousands of products costs no widgets.
class ProductTileDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int minimumWidth = 176;
    static constexpr int height = 112;

    using QStyledItemDelegate::QStyledItemDelegate;

    // Tiles share out the width the grid has, so no strip of it is left empty at the side.
    QSize tileSize() const { return {m_width, height}; }
    // The grid's size for tiles in `available` pixels of width.
    static QSize tileSizeFor(int available);
    void setTileSize(QSize size) { m_width = size.width(); }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    int m_width = minimumWidth;
};
