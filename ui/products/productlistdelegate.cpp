#include "ui/products/productlistdelegate.h"

#include "ui/controls/paintedrow.h"

#include <QApplication>
#include <QPainter>

namespace {
constexpr int badgeGap = 6;
} // namespace

using namespace PaintedRow;

QSize ProductListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const QFontMetrics top(sized(option.font, 14, true));
    const QFontMetrics bottom(sized(option.font, 13));
    return {240, padY * 2 + top.height() + lineGap + bottom.height() + 2};
}

void ProductListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool selected = paintGround(painter, option);
    const QRect area = option.rect.adjusted(padX, padY, -padX, -padY);

    // Top line: name, price.
    const QFont topFont = sized(option.font, 14, true);
    const QFontMetrics topMetrics(topFont);
    painter->setFont(topFont);
    const QString price = index.data(priceRole).toString();
    const int priceWidth = topMetrics.horizontalAdvance(price);
    const QRect topLine(area.left(), area.top(), area.width(), topMetrics.height());
    painter->setPen(mainInk(selected));
    painter->drawText(topLine, Qt::AlignRight | Qt::AlignVCenter, price);
    const QString name = topMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                               area.width() - priceWidth - 16);
    painter->drawText(topLine, Qt::AlignLeft | Qt::AlignVCenter, name);

    // Bottom line: badges, SKU and category; stock on the right.
    const QFont bottomFont = sized(option.font, 13);
    const QFontMetrics bottomMetrics(bottomFont);
    const QRect bottomLine(area.left(), topLine.bottom() + lineGap, area.width(), bottomMetrics.height() + 2);
    const int centreY = bottomLine.center().y();
    painter->setFont(sized(option.font, 11, true));
    int x = bottomLine.left();
    x += drawBadge(painter, index.data(badgeRole).toString(), x, centreY, badgeGround, badgeInk, selected) +
         badgeGap;
    if (index.data(inactiveRole).toBool())
        x += drawBadge(painter, QStringLiteral("Inactive"), x, centreY, warningGround, warningInk, selected) +
             badgeGap;

    painter->setFont(bottomFont);
    painter->setPen(sideInk(selected));
    const QString stock = index.data(stockRole).toString();
    const int stockWidth = bottomMetrics.horizontalAdvance(stock);
    painter->drawText(bottomLine, Qt::AlignRight | Qt::AlignVCenter, stock);
    QStringList details;
    for (const QString& part : {index.data(skuRole).toString(), index.data(categoryRole).toString()}) {
        if (!part.isEmpty())
            details.append(part);
    }
    const QRect detailBox(x + 2, bottomLine.top(), bottomLine.right() - stockWidth - 16 - x,
                          bottomLine.height());
    // Too narrow for more than an ellipsis: nothing is clearer.
    if (detailBox.width() > bottomMetrics.horizontalAdvance(QStringLiteral("XX-…")))
        painter->drawText(
            detailBox, Qt::AlignLeft | Qt::AlignVCenter,
            bottomMetrics.elidedText(details.join(QStringLiteral(" · ")), Qt::ElideRight, detailBox.width()));
    painter->restore();
}
