#include "receipts/pointtext.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <map>

QPaintDevice& PointText::pointDevice()
{
    // Kept for the life of the process; never destroyed after the application's fonts are gone.
    static QPdfWriter* const device = [] {
        auto* writer = new QPdfWriter(new QBuffer);
        writer->setResolution(72);
        return writer;
    }();
    return *device;
}

double PointText::Block::width() const
{
    double widest = 0;
    for (int index = 0; index < layout->lineCount(); ++index)
        widest = std::max(widest, layout->lineAt(index).naturalTextWidth());
    return widest;
}

PointText::Block PointText::wrapped(const QString& text, const QFont& font, double width, Qt::Alignment alignment,
                                    QTextOption::WrapMode wrapMode)
{
    Block block{std::make_unique<QTextLayout>(text, font, &pointDevice()), 0};
    QTextOption option(alignment);
    option.setWrapMode(wrapMode);
    block.layout->setTextOption(option);
    block.layout->beginLayout();
    for (QTextLine line = block.layout->createLine(); line.isValid(); line = block.layout->createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        line.setPosition(QPointF(0, block.height));
        block.height += line.height();
    }
    block.layout->endLayout();
    return block;
}

double PointText::singleLineWidth(const QString& text, const QFont& font)
{
    // Measured by the same layout that wraps text, so that a text given its own width never wraps.
    return wrapped(text, font, 1e6, Qt::AlignLeft, QTextOption::NoWrap).width();
}

const QFont& PointText::systemFont(double pointSize, bool bold)
{
    // Never destroyed: a font outliving the application would be freed after the font database.
    static auto& made = *new std::map<std::pair<double, bool>, QFont>;
    auto [kept, isNew] = made.try_emplace({pointSize, bold});
    if (isNew) {
        kept->second = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
        kept->second.setPointSizeF(pointSize);
        kept->second.setBold(bold);
    }
    return kept->second;
}

void PointText::usePoints(QPainter& painter)
{
    if (const QPaintDevice* device = painter.device()) {
        const double pixelsPerPoint = device->logicalDpiY() / 72.0;
        painter.scale(pixelsPerPoint, pixelsPerPoint);
    }
}
