#include "ui/appointments/appointmentrowdelegate.h"

#include "ui/controls/paintedrow.h"

#include <QPainter>

namespace {
constexpr int padding = 8;
constexpr int lineGap = 3;

QFont smallFont(const QFont& base)
{
    return PaintedRow::sized(base, 13);
}

// Below the time: the service always, the customer and the warning when there are any.
QStringList lowerLines(const QModelIndex& index)
{
    QStringList lines{index.data(AppointmentRowDelegate::serviceRole).toString()};
    for (int role : {AppointmentRowDelegate::customerRole, AppointmentRowDelegate::clashRole}) {
        const QString text = index.data(role).toString();
        if (!text.isEmpty())
            lines << text;
    }
    return lines;
}
} // namespace

QSize AppointmentRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QFont bold = option.font;
    bold.setBold(true);
    const int lines = int(lowerLines(index).size());
    return {200, QFontMetrics(bold).height() +
                     lines * (QFontMetrics(smallFont(option.font)).height() + lineGap) + 2 * padding + 6};
}

void AppointmentRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    painter->save();
    const bool selected = PaintedRow::paintGround(painter, option);

    const QRect area = option.rect.adjusted(14, padding, -14, -padding);
    const QFont small = smallFont(option.font);
    const QFontMetrics smallMetrics(small);
    QFont bold = option.font;
    bold.setBold(true);
    const QFontMetrics boldMetrics(bold);

    const QString status = index.data(statusRole).toString();
    const int statusWidth = status.isEmpty() ? 0 : smallMetrics.horizontalAdvance(status) + 12;
    QRect line(area.left(), area.top(), area.width(), boldMetrics.height());
    painter->setFont(small);
    painter->setPen(PaintedRow::sideInk(selected));
    painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter, status);
    painter->setFont(bold);
    painter->setPen(PaintedRow::mainInk(selected));
    painter->drawText(line.adjusted(0, 0, -statusWidth, 0), Qt::AlignLeft | Qt::AlignVCenter,
                      boldMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                             area.width() - statusWidth));

    const QString clash = index.data(clashRole).toString();
    painter->setFont(small);
    for (const QString& text : lowerLines(index)) {
        line = QRect(area.left(), line.bottom() + lineGap, area.width(), smallMetrics.height());
        if (text == clash)
            painter->setPen(selected ? QColor(0xff, 0xe0, 0xb2) : QColor(0x9a, 0x5b, 0x00));
        else
            painter->setPen(selected ? QColor(0xdc, 0xe8, 0xf6) : QColor(0x3d, 0x46, 0x52));
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          smallMetrics.elidedText(text, Qt::ElideRight, area.width()));
    }
    painter->restore();
}
