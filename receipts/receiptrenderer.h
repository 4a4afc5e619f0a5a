#pragma once

#include "receipts/receiptdata.h"

#include <QFont>
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <optional>
#include <variant>

class QPainter;

// Lays a receipt out as rows and draws them with proportional fonts on a page measured in
// points. The printed page, the PDF and the preview differ only in the page's width.
class ReceiptRenderer {
public:
    struct TextRow {
        QString text;
        QFont font;
        Qt::Alignment alignment = Qt::AlignHCenter;
    };
    struct ColumnsRow {
        QString label;
        QString value;
        QFont font;
    };
    struct SpacerRow {
        double height = 0;
    };
    struct RuleRow {};
    using Row = std::variant<TextRow, ColumnsRow, SpacerRow, RuleRow>;

    struct ColumnWidths {
        double labelWidth = 0;
        double valueWidth = 0;
    };

    static constexpr double thermalPageWidth = 226.77; // 80 mm
    static constexpr double letterPageWidth = 612;
    static constexpr double sideMargin = 14;
    static constexpr double topMargin = 16;
    static constexpr double bottomMargin = 16;

    static const QFont& titleFont();
    static const QFont& bodyFont();
    static const QFont& boldBodyFont();
    static const QFont& smallFont();

    static QList<Row> layout(const ReceiptData& receipt);
    static ColumnWidths columnWidths(const QString& label, const QFont& font, double contentWidth);
    static QSizeF contentSize(const ReceiptData& receipt, bool useThermalWidth);
    static double textTop(const ReceiptData& receipt, double pageWidth);
    static std::optional<QRectF> logoRect(const ReceiptData& receipt, double pageWidth);
    // Only the page's width is used; the painter's device may have any resolution.
    static void draw(const ReceiptData& receipt, QPainter& painter, const QSizeF& pageSize);

    static double rowHeight(const Row& row, double contentWidth);
    static double contentWidth(double pageWidth) { return pageWidth - 2 * sideMargin; }
};
