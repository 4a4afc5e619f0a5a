#include "ui/products/productlistdelegate.h"

#include <QApplication>
#include <QListWidgetItem>
#include <QPainter>
#include <QPainterPath>

namespace {
// The theme's colours, as the style sheet doesn't reach painted rows.
const QColor ink(0x1f, 0x23, 0x28);
const QColor muted(0x5f, 0x6b, 0x7a);
const QColor hairline(0xee, 0xf0, 0xf3);
const QColor hover(0xf0, 0xf3, 0xf6);
const QColor badgeGround(0xdc, 0xe8, 0xf6);
const QColor badgeInk(0x1d, 0x4f, 0x86);
const QColor inactiveGround(0xfb, 0xe9, 0xe7);
const QColor inactiveInk(0xa3, 0x2a, 0x1e);

constexpr int padX = 14;
constexpr int padY = 9;
constexpr int lineGap = 5;
constexpr int badgeGap = 6;

QFont withPixelSize(QFont font, int size, bool bold = false)
{
    font.setPixelSize(size);
    font.setBold(bold);
    return font;
}

// Draws a rounded badge with its left edge at x, centred on the line; returns its width.
int drawBadge(QPainter* painter, const QString& text, int x, int centreY, const QColor& ground,
              const QColor& textColour)
{
    const QFontMetrics metrics(painter->font());
    const int width = metrics.horizontalAdvance(text) + 14;
    const int height = metrics.height() + 2;
    const QRect box(x, centreY - height / 2, width, height);
    QPainterPath path;
    path.addRoundedRect(box, height / 2.0, height / 2.0);
    painter->fillPath(path, ground);
    painter->setPen(textColour);
    painter->drawText(box, Qt::AlignCenter, text);
    return width;
}
} // namespace

void ProductListDelegate::fill(QListWidgetItem* item, const ProductListRow& row)
{
    item->setText(row.name);
    item->setData(idRole, row.product->id());
    item->setData(skuRole, row.sku);
    item->setData(categoryRole, row.category);
    item->setData(priceRole, row.price);
    item->setData(stockRole, row.stockText);
    item->setData(badgeRole, row.typeBadge);
    item->setData(inactiveRole, row.isInactive);
    QStringList spoken{row.name, row.typeBadge, row.price, row.stockText};
    if (row.isInactive)
        spoken.append(QStringLiteral("Inactive"));
    item->setData(Qt::AccessibleTextRole, spoken.join(QStringLiteral(", ")));
}

QSize ProductListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const QFontMetrics top(withPixelSize(option.font, 14, true));
    const QFontMetrics bottom(withPixelSize(option.font, 13));
    return {240, padY * 2 + top.height() + lineGap + bottom.height() + 2};
}

void ProductListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
    else if (option.state & QStyle::State_MouseOver)
        painter->fillRect(option.rect, hover);
    painter->setPen(hairline);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());

    const QColor mainInk = selected ? QColor(Qt::white) : ink;
    const QColor sideInk = selected ? QColor(0xdc, 0xe8, 0xf6) : muted;
    const QRect area = option.rect.adjusted(padX, padY, -padX, -padY);

    // Top line: name, price.
    const QFont topFont = withPixelSize(option.font, 14, true);
    const QFontMetrics topMetrics(topFont);
    painter->setFont(topFont);
    const QString price = index.data(priceRole).toString();
    const int priceWidth = topMetrics.horizontalAdvance(price);
    const QRect topLine(area.left(), area.top(), area.width(), topMetrics.height());
    painter->setPen(mainInk);
    painter->drawText(topLine, Qt::AlignRight | Qt::AlignVCenter, price);
    const QString name = topMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                               area.width() - priceWidth - 16);
    painter->drawText(topLine, Qt::AlignLeft | Qt::AlignVCenter, name);

    // Bottom line: badges, SKU and category; stock on the right.
    const QFont bottomFont = withPixelSize(option.font, 13);
    const QFontMetrics bottomMetrics(bottomFont);
    const QRect bottomLine(area.left(), topLine.bottom() + lineGap, area.width(), bottomMetrics.height() + 2);
    const int centreY = bottomLine.center().y();
    painter->setFont(withPixelSize(option.font, 11, true));
    int x = bottomLine.left();
    x += drawBadge(painter, index.data(badgeRole).toString(), x, centreY,
                   selected ? QColor(255, 255, 255, 50) : badgeGround,
                   selected ? QColor(Qt::white) : badgeInk) +
         badgeGap;
    if (index.data(inactiveRole).toBool())
        x += drawBadge(painter, QStringLiteral("Inactive"), x, centreY,
                       selected ? QColor(255, 255, 255, 50) : inactiveGround,
                       selected ? QColor(Qt::white) : inactiveInk) +
             badgeGap;

    painter->setFont(bottomFont);
    painter->setPen(sideInk);
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
