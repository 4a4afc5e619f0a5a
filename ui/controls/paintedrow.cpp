#include "ui/controls/paintedrow.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionViewItem>

namespace PaintedRow {

namespace {
const QColor hairline(0xee, 0xf0, 0xf3);
const QColor hover(0xf0, 0xf3, 0xf6);
} // namespace

QFont sized(QFont font, int pixels, bool bold)
{
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

bool paintGround(QPainter* painter, const QStyleOptionViewItem& option)
{
    const bool chosen = option.state & QStyle::State_Selected;
    if (chosen)
        painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
    else if (option.state & QStyle::State_MouseOver)
        painter->fillRect(option.rect, hover);
    painter->setPen(hairline);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    return chosen;
}

QColor mainInk(bool chosen)
{
    return chosen ? QColor(Qt::white) : ink;
}

QColor sideInk(bool chosen)
{
    return chosen ? badgeGround : muted;
}

int drawBadge(QPainter* painter, const QString& text, int x, int centreY, const QColor& ground,
              const QColor& textColour, bool chosen)
{
    const QFontMetrics metrics(painter->font());
    const int width = metrics.horizontalAdvance(text) + 14;
    const int height = metrics.height() + 2;
    const QRect box(x, centreY - height / 2, width, height);
    QPainterPath path;
    path.addRoundedRect(box, height / 2.0, height / 2.0);
    painter->fillPath(path, chosen ? QColor(255, 255, 255, 50) : ground);
    painter->setPen(chosen ? QColor(Qt::white) : textColour);
    painter->drawText(box, Qt::AlignCenter, text);
    return width;
}

} // namespace PaintedRow
