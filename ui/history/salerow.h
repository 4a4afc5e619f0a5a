#pragma once

#include <QStyledItemDelegate>

// Draws one sale of the history list: invoice number and total on top, when and by whom below
// with the status badge. A voided sale's total is struck through, as it counts nowhere. Painted,
// not built of widgets, so that a long history scrolls at once.
class SaleRow : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
