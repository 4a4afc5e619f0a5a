#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>
#include <QTextOption>

#include <memory>

class QPaintDevice;

// Text measured and laid out in points, for pages drawn in points: receipts and report PDFs. The
// layout is made for a 72-dpi PDF page, where one unit is one point; every device draws that same
// layout scaled to its resolution, so measuring and drawing always agree.
class PointText {
public:
    // A block of text wrapped to a width, with its lines' leading; drawn from where it was measured.
    struct Block {
        std::unique_ptr<QTextLayout> layout;
        double height = 0;
        // The widest line's natural width.
        double width() const;
    };

    static Block wrapped(const QString& text, const QFont& font, double width, Qt::Alignment alignment,
                         QTextOption::WrapMode wrapMode = QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The width of the text on one line.
    static double singleLineWidth(const QString& text, const QFont& font);
    // The platform's proportional typeface; made once and kept for the life of the process.
    static const QFont& systemFont(double pointSize, bool bold);
    // Scales the painter so that one unit is one point on its device.
    static void usePoints(class QPainter& painter);

private:
    static QPaintDevice& pointDevice();
};
