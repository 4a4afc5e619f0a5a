#include "receipts/receiptrenderer.h"

#include "money/currency.h"
#include "receipts/logoimage.h"
#include "receipts/pointtext.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastRowHeight = 15;
constexpr double ruleHeight = 15;
constexpr double largestLogoHeight = 72;
constexpr double gapUnderLogo = 8;
constexpr double columnGap = 8;
constexpr double leastThermalHeight = 200;
constexpr double leastLetterHeight = 792;

using Block = PointText::Block;

double textRowHeight(double measured)
{
    return std::max(std::ceil(measured) + 1, leastRowHeight);
}

QString money(const ReceiptData& receipt, double amount)
{
    return Currency::format(amount, receipt.currencySymbol);
}

double pageWidthFor(bool useThermalWidth)
{
    return useThermalWidth ? ReceiptRenderer::thermalPageWidth : ReceiptRenderer::letterPageWidth;
}

struct ColumnBlocks {
    Block label;
    Block value;
    ReceiptRenderer::ColumnWidths widths;
    double height() const { return std::max(textRowHeight(label.height), textRowHeight(value.height)); }
};

ColumnBlocks columnBlocks(const ReceiptRenderer::ColumnsRow& row, double contentWidth)
{
    const ReceiptRenderer::ColumnWidths widths = ReceiptRenderer::columnWidths(row.label, row.font, contentWidth);
    return {PointText::wrapped(row.label, row.font, widths.labelWidth, Qt::AlignLeft),
            PointText::wrapped(row.value, row.font, widths.valueWidth, Qt::AlignRight), widths};
}

} // namespace

const QFont& ReceiptRenderer::titleFont()
{
    return PointText::systemFont(13, true);
}

const QFont& ReceiptRenderer::bodyFont()
{
    return PointText::systemFont(11, false);
}

const QFont& ReceiptRenderer::boldBodyFont()
{
    return PointText::systemFont(11, true);
}

const QFont& ReceiptRenderer::smallFont()
{
    return PointText::systemFont(9, false);
}

QList<ReceiptRenderer::Row> ReceiptRenderer::layout(const ReceiptData& receipt)
{
    QList<Row> rows;
    const auto text = [&rows](const QString& line, const QFont& font, Qt::Alignment alignment = Qt::AlignHCenter) {
        rows.append(TextRow{line, font, alignment});
    };
    const auto columns = [&rows](const QString& label, const QString& value, const QFont& font) {
        rows.append(ColumnsRow{label, value, font});
    };

    if (receipt.isRefund)
        text(QStringLiteral("REFUND RECEIPT"), titleFont());
    if (receipt.voidNote)
        text(*receipt.voidNote, titleFont());
    text(receipt.businessName, titleFont());
    if (!receipt.addressLine.isEmpty())
        text(receipt.addressLine, smallFont());
    if (!receipt.phoneNumber.isEmpty())
        text(receipt.phoneNumber, smallFont());
    rows.append(SpacerRow{4});
    rows.append(RuleRow{});

    columns(QStringLiteral("Receipt #"), receipt.invoiceNumber, boldBodyFont());
    const QString date = QLocale::system().toString(receipt.timestamp.toLocalTime(),
                                                    QStringLiteral("MMM d, yyyy h:mm AP"));
    columns(QStringLiteral("Date"), date, bodyFont());
    columns(QStringLiteral("Cashier"), receipt.cashierName, bodyFont());
    if (receipt.customerName)
        columns(QStringLiteral("Customer"), *receipt.customerName, bodyFont());
    rows.append(RuleRow{});

    for (const ReceiptData::Line& line : receipt.lines) {
        text(line.name, boldBodyFont(), Qt::AlignLeft);
        columns(QStringLiteral("  %1 x %2").arg(line.quantityText(), money(receipt, line.unitPrice)),
                money(receipt, line.lineTotal), bodyFont());
    }
    rows.append(RuleRow{});

    columns(QStringLiteral("Subtotal"), money(receipt, receipt.subtotal), bodyFont());
    if (receipt.discountTotal != 0)
        columns(QStringLiteral("Discount"), QLatin1Char('-') + money(receipt, std::abs(receipt.discountTotal)),
                bodyFont());
    if (receipt.pointsRedeemed >= 1)
        columns(QStringLiteral("Points redeemed (%1)").arg(receipt.pointsRedeemed),
                QLatin1Char('-') + money(receipt, receipt.pointsDiscount), bodyFont());
    for (const ReceiptData::TaxRow& tax : receipt.taxRows())
        columns(tax.label, money(receipt, tax.value), tax.isTotal ? boldBodyFont() : bodyFont());
    columns(QStringLiteral("TOTAL"), money(receipt, receipt.total), titleFont());
    rows.append(SpacerRow{2});

    for (const ReceiptData::PaymentLine& payment : receipt.payments) {
        columns(payment.method, money(receipt, payment.amount), bodyFont());
        if (payment.changeGiven > 0)
            columns(QStringLiteral("  Change"), money(receipt, payment.changeGiven), smallFont());
    }
    if (receipt.accountBalance)
        columns(QStringLiteral("Account balance"), money(receipt, *receipt.accountBalance), boldBodyFont());
    for (const ReceiptData::LoyaltyRow& loyalty : receipt.loyaltyRows())
        columns(loyalty.label, loyalty.value, bodyFont());
    rows.append(RuleRow{});
    rows.append(SpacerRow{4});
    text(receipt.footer, smallFont());
    return rows;
}

ReceiptRenderer::ColumnWidths ReceiptRenderer::columnWidths(const QString& label, const QFont& font,
                                                            double contentWidth)
{
    const double measured = std::ceil(PointText::singleLineWidth(label, font));
    const double labelWidth = std::min(measured, 0.6 * contentWidth);
    return {labelWidth, contentWidth - labelWidth - columnGap};
}

double ReceiptRenderer::rowHeight(const Row& row, double contentWidth)
{
    if (const auto* text = std::get_if<TextRow>(&row))
        return textRowHeight(PointText::wrapped(text->text, text->font, contentWidth, text->alignment).height);
    if (const auto* columns = std::get_if<ColumnsRow>(&row))
        return columnBlocks(*columns, contentWidth).height();
    if (const auto* spacer = std::get_if<SpacerRow>(&row))
        return spacer->height;
    return ruleHeight;
}

QSizeF ReceiptRenderer::contentSize(const ReceiptData& receipt, bool useThermalWidth)
{
    const double pageWidth = pageWidthFor(useThermalWidth);
    double height = textTop(receipt, pageWidth);
    for (const Row& row : layout(receipt))
        height += rowHeight(row, contentWidth(pageWidth));
    height += bottomMargin;
    return {pageWidth, std::max(height, useThermalWidth ? leastThermalHeight : leastLetterHeight)};
}

double ReceiptRenderer::textTop(const ReceiptData& receipt, double pageWidth)
{
    const std::optional<QRectF> logo = logoRect(receipt, pageWidth);
    return logo ? logo->bottom() + gapUnderLogo : topMargin;
}

std::optional<QRectF> ReceiptRenderer::logoRect(const ReceiptData& receipt, double pageWidth)
{
    const std::optional<QSize> size = LogoImage::pngSize(receipt.logoPNG);
    if (!size || LogoImage::decoded(*receipt.logoPNG).isNull())
        return std::nullopt;
    const double width = contentWidth(pageWidth);
    const double largestWidth = std::min(0.6 * width, 180.0);
    const double scale = std::min(largestWidth / size->width(), largestLogoHeight / size->height());
    const QSizeF logo(size->width() * scale, size->height() * scale);
    return QRectF(QPointF((width - logo.width()) * 0.5 + sideMargin, topMargin), logo);
}

void ReceiptRenderer::draw(const ReceiptData& receipt, QPainter& painter, const QSizeF& pageSize)
{
    painter.save();
    PointText::usePoints(painter);
    const double pageWidth = pageSize.width();
    const double width = contentWidth(pageWidth);
    if (const std::optional<QRectF> logo = logoRect(receipt, pageWidth)) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setOpacity(1);
        painter.drawImage(*logo, LogoImage::decoded(*receipt.logoPNG));
    }
    painter.setPen(Qt::black);

    double y = textTop(receipt, pageWidth);
    for (const Row& row : layout(receipt)) {
        if (const auto* text = std::get_if<TextRow>(&row)) {
            const Block block = PointText::wrapped(text->text, text->font, width, text->alignment);
            block.layout->draw(&painter, QPointF(sideMargin, y));
            y += textRowHeight(block.height);
        } else if (const auto* columns = std::get_if<ColumnsRow>(&row)) {
            const ColumnBlocks blocks = columnBlocks(*columns, width);
            blocks.label.layout->draw(&painter, QPointF(sideMargin, y));
            blocks.value.layout->draw(&painter, QPointF(sideMargin + width - blocks.widths.valueWidth, y));
            y += blocks.height();
        } else if (const auto* spacer = std::get_if<SpacerRow>(&row)) {
            y += spacer->height;
        } else {
            // A fixed run of dashes, cut off by its box wherever the page is narrower.
            const QRectF box(sideMargin, y, width, ruleHeight);
            const Block dashes = PointText::wrapped(QString(40, QLatin1Char('-')), smallFont(), width, Qt::AlignLeft,
                                         QTextOption::NoWrap);
            painter.save();
            painter.setClipRect(box, Qt::IntersectClip);
            dashes.layout->draw(&painter, box.topLeft());
            painter.restore();
            y += ruleHeight;
        }
    }
    painter.restore();
}
