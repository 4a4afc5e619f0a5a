#include "ui/controls/recordrowdelegate.h"

#include "ui/controls/paintedrow.h"

#include <QPainter>

QSize RecordRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {200, QFontMetrics(option.font).height() * 2 + 22};
}

void RecordRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    painter->save();
    const bool selected = PaintedRow::paintGround(painter, option);

    const QRect area = option.rect.adjusted(14, 8, -14, -8);
    QFont bold = option.font;
    bold.setBold(true);
    const QFontMetrics boldMetrics(bold);
    QString name = index.data(Qt::DisplayRole).toString();
    if (index.data(inactiveRole).toBool())
        name += QStringLiteral(" · Inactive");
    const QString detail = index.data(detailRole).toString();
    painter->setFont(bold);
    painter->setPen(PaintedRow::mainInk(selected));
    // With nothing to say under it, the name stands in the middle rather than over an empty line.
    const QRect top = detail.isEmpty() ? area : QRect(area.left(), area.top(), area.width(), boldMetrics.height());
    painter->drawText(top, Qt::AlignLeft | Qt::AlignVCenter,
                      boldMetrics.elidedText(name, Qt::ElideRight, area.width()));
    if (detail.isEmpty()) {
        painter->restore();
        return;
    }
    const QFont small = PaintedRow::sized(option.font, 13);
    painter->setFont(small);
    painter->setPen(PaintedRow::sideInk(selected));
    const QRect bottom(area.left(), top.bottom() + 4, area.width(), area.bottom() - top.bottom() - 4);
    painter->drawText(
        bottom, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetrics(small).elidedText(detail, Qt::ElideRight, area.width()));
    painter->restore();
}
