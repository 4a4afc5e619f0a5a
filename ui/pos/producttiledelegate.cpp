#include "ui/pos/producttiledelegate.h"

#include "pos/productgridmodel.h"
#include "ui/controls/paintedrow.h"

#include <QPainter>
#include <QPainterPath>

namespace {
const QColor tileGround(0xff, 0xff, 0xff);
const QColor tileEdge(0xd5, 0xdb, 0xe3);
const QColor hoverEdge(0x3b, 0x82, 0xd6);

// The name wrapped at words into two lines at most; what doesn't fit ends the second in an ellipsis.
QStringList twoLines(const QString& text, const QFontMetrics& metrics, int width)
{
    if (metrics.horizontalAdvance(text) <= width)
        return {text};
    int cut = text.size();
    while (cut > 0 && metrics.horizontalAdvance(text.left(cut)) > width)
        cut = int(text.lastIndexOf(QLatin1Char(' '), cut - 1));
    if (cut <= 0)
        return {metrics.elidedText(text, Qt::ElideRight, width)};
    return {text.left(cut), metrics.elidedText(text.mid(cut + 1), Qt::ElideRight, width)};
}

} // namespace

QSize ProductTileDelegate::tileSizeFor(int available)
{
    // The list lays out a little short of its width: a row that fills it exactly would wrap.
    const int usable = available - 4;
    const int columns = std::max(1, usable / minimumWidth);
    return {usable / columns, height};
}

QSize ProductTileDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return tileSize();
}

void ProductTileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(option.rect).adjusted(4.5, 4.5, -4.5, -4.5);
    const bool hovered = option.state & QStyle::State_MouseOver;
    QPainterPath outline;
    outline.addRoundedRect(card, 8, 8);
    painter->fillPath(outline, tileGround);
    painter->setPen(QPen(hovered ? hoverEdge : tileEdge, hovered ? 1.5 : 1));
    painter->drawPath(outline);

    const QRect area = card.toRect().adjusted(10, 8, -10, -8);
    const QFont nameFont = PaintedRow::sized(option.font, 14, true);
    const QFont smallFont = PaintedRow::sized(option.font, 12);
    const QFontMetrics nameMetrics(nameFont);
    const QFontMetrics smallMetrics(smallFont);

    painter->setFont(nameFont);
    painter->setPen(PaintedRow::ink);
    const QStringList lines = twoLines(index.data(ProductGridModel::TileNameRole).toString(), nameMetrics, area.width());
    for (int i = 0; i < lines.size(); ++i)
        painter->drawText(QRect(area.left(), area.top() + i * nameMetrics.height(), area.width(), nameMetrics.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, lines[i]);
    const int nameHeight = nameMetrics.height() * 2;

    painter->setFont(PaintedRow::sized(option.font, 14, true));
    const int priceTop = area.top() + nameHeight + 2;
    painter->drawText(QRect(area.left(), priceTop, area.width(), nameMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                      index.data(ProductGridModel::PriceTextRole).toString());

    painter->setFont(smallFont);
    painter->setPen(PaintedRow::muted);
    const QString category = index.data(ProductGridModel::CategoryNameRole).toString();
    const QString type = index.data(ProductGridModel::TypeTextRole).toString();
    const QString kind = category.isEmpty() ? type : category + QStringLiteral(" · ") + type;
    const int kindTop = priceTop + nameMetrics.height();
    painter->drawText(QRect(area.left(), kindTop, area.width(), smallMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                      smallMetrics.elidedText(kind, Qt::ElideRight, area.width()));

    const QString stock = index.data(ProductGridModel::StockTextRole).toString();
    if (!stock.isEmpty()) {
        const bool low = index.data(ProductGridModel::LowStockRole).toBool();
        painter->setPen(low ? PaintedRow::warningInk : PaintedRow::muted);
        painter->drawText(QRect(area.left(), area.bottom() - smallMetrics.height() + 1, area.width(), smallMetrics.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, smallMetrics.elidedText(stock, Qt::ElideRight, area.width()));
    }
    painter->restore();
}
