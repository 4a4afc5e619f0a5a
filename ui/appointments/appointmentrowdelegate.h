#pragma once

#include <QStyledItemDelegate>

// A booking's row in the day list: the time in bold with its status at the right, the service and
// who does it, the customer, and a warning when it overlaps another booking of the same person.
// The item's text is the time; the roles carry the rest.
class AppointmentRowDelegate : public QStyledItemDelegate {
public:
    static constexpr int serviceRole = Qt::UserRole + 1;
    static constexpr int customerRole = Qt::UserRole + 2;
    static constexpr int statusRole = Qt::UserRole + 3;
    static constexpr int clashRole = Qt::UserRole + 4;

    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
