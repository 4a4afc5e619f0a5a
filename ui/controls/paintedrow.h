#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QPainter;
class QStyleOptionViewItem;

// What the delegates of long lists share: the theme's colours, which the style sheet doesn't
// reach in painted rows, the ground of a row as it is chosen or hovered, and badges.
namespace PaintedRow {

inline const QColor ink(0x1f, 0x23, 0x28);
inline const QColor muted(0x5f, 0x6b, 0x7a);
inline const QColor badgeGround(0xdc, 0xe8, 0xf6);
inline const QColor badgeInk(0x1d, 0x4f, 0x86);
// A badge for what doesn't count: inactive, voided.
inline const QColor warningGround(0xfb, 0xe9, 0xe7);
inline const QColor warningInk(0xa3, 0x2a, 0x1e);

constexpr int padX = 14;
constexpr int padY = 9;
constexpr int lineGap = 5;

QFont sized(QFont font, int pixels, bool bold = false);

// Fills the row for its state, with a hairline under it; true when the row is chosen, whose texts
// are then drawn light on the highlight.
bool paintGround(QPainter* painter, const QStyleOptionViewItem& option);
QColor mainInk(bool chosen);
QColor sideInk(bool chosen);

// A rounded badge in the painter's font with its left edge at x, centred on centreY; returns its
// width. A chosen row's badges are white on the highlight, whatever their colours.
int drawBadge(QPainter* painter, const QString& text, int x, int centreY, const QColor& ground,
              const QColor& textColour, bool chosen);

} // namespace PaintedRow
