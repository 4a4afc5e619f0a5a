#pragma once

#include <QStyledItemDelegate>

// A record's row in a list: the name in bold with " · Inactive" beside it when so, and a line of
// detail below. The item's text is the name; the roles carry the rest.
class RecordRowDelegate : public QStyledItemDelegate {
public:
    static constexpr int detailRole = Qt::UserRole + 1;
    static constexpr int inactiveRole = Qt::UserRole + 2;

    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
