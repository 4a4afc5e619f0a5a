#include "ui/controls/recordrowdelegate.h"

#include <QPainter>

bool paintRowGround(QPainter* painter, const QStyleOptionViewItem& option)
{
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
    else if (option.state & QStyle::State_MouseOver)
        painter->fillRect(option.rect, QColor(0xf0, 0xf3, 0xf6));
    painter->setPen(QColor(0xee, 0xf0, 0xf3));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    return selected;
}

QSize RecordRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {200, QFontMetrics(option.font).height() * 2 + 22};
}

void RecordRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    painter->save();
    const bool selected = paintRowGround(painter, option);

    const QRect area = option.rect.adjusted(14, 8, -14, -8);
    QFont bold = option.font;
    bold.setBold(true);
    const QFontMetrics boldMetrics(bold);
    QString name = index.data(Qt::DisplayRole).toString();
    if (index.data(inactiveRole).toBool())
        name += QStringLiteral(" · Inactive");
    painter->setFont(bold);
    painter->setPen(selected ? QColor(Qt::white) : QColor(0x1f, 0x23, 0x28));
    const QRect top(area.left(), area.top(), area.width(), boldMetrics.height());
    painter->drawText(top, Qt::AlignLeft | Qt::AlignVCenter,
                      boldMetrics.elidedText(name, Qt::ElideRight, area.width()));
    QFont small = option.font;
    small.setPixelSize(13);
    painter->setFont(small);
    painter->setPen(selected ? QColor(0xdc, 0xe8, 0xf6) : QColor(0x5f, 0x6b, 0x7a));
    const QRect bottom(area.left(), top.bottom() + 4, area.width(), area.bottom() - top.bottom() - 4);
    painter->drawText(
        bottom, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetrics(small).elidedText(index.data(detailRole).toString(), Qt::ElideRight, area.width()));
    painter->restore();
}
