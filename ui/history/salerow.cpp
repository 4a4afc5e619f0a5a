#include "ui/history/salerow.h"

#include "ui/controls/paintedrow.h"
#include "ui/history/saleslistmodel.h"

#include <QPainter>

using namespace PaintedRow;

QSize SaleRow::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const QFontMetrics top(sized(option.font, 14, true));
    const QFontMetrics bottom(sized(option.font, 13));
    return {280, padY * 2 + top.height() + lineGap + bottom.height() + 2};
}

void SaleRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool selected = paintGround(painter, option);
    const QRect area = option.rect.adjusted(padX, padY, -padX, -padY);
    const bool voided = index.data(SalesListModel::isVoidedRole).toBool();

    // Top line: invoice number, total.
    QFont topFont = sized(option.font, 14, true);
    const QFontMetrics topMetrics(topFont);
    const QRect topLine(area.left(), area.top(), area.width(), topMetrics.height());
    const QString total = index.data(SalesListModel::totalRole).toString();
    const int totalWidth = topMetrics.horizontalAdvance(total);
    painter->setPen(mainInk(selected));
    painter->setFont(topFont);
    painter->drawText(topLine, Qt::AlignLeft | Qt::AlignVCenter,
                      topMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                            area.width() - totalWidth - 16));
    if (voided) {
        topFont.setStrikeOut(true);
        painter->setFont(topFont);
        painter->setPen(sideInk(selected));
    }
    painter->drawText(topLine, Qt::AlignRight | Qt::AlignVCenter, total);

    // Bottom line: when and by whom; the badge on the right.
    const QFont bottomFont = sized(option.font, 13);
    const QFontMetrics bottomMetrics(bottomFont);
    const QRect bottomLine(area.left(), topLine.bottom() + lineGap, area.width(), bottomMetrics.height() + 2);
    int badgeLeft = bottomLine.right();
    if (const QString badge = index.data(SalesListModel::badgeRole).toString(); !badge.isEmpty()) {
        const QFont badgeFont = sized(option.font, 11, true);
        painter->setFont(badgeFont);
        badgeLeft -= QFontMetrics(badgeFont).horizontalAdvance(badge) + 14;
        drawBadge(painter, badge, badgeLeft, bottomLine.center().y(), voided ? warningGround : badgeGround,
                  voided ? warningInk : badgeInk, selected);
    }
    QStringList details{index.data(SalesListModel::whenRole).toString()};
    if (const QString cashier = index.data(SalesListModel::cashierRole).toString(); !cashier.isEmpty())
        details << cashier;
    painter->setFont(bottomFont);
    painter->setPen(sideInk(selected));
    painter->drawText(bottomLine.adjusted(0, 0, badgeLeft - bottomLine.right() - 8, 0),
                      Qt::AlignLeft | Qt::AlignVCenter,
                      bottomMetrics.elidedText(details.join(QStringLiteral(" · ")), Qt::ElideRight,
                                               badgeLeft - bottomLine.left() - 8));
    painter->restore();
}
