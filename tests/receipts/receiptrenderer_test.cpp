#include "receipts/receiptrenderer.h"

#include "receipts/logoimage.h"
#include "receipts/receipthardwareerror.h"
#include "receipts/receiptprinting.h"
#include "receiptscene.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>

namespace {

using Row = ReceiptRenderer::Row;

// A row as one line of text, enough to compare the order and content of a layout.
QString describe(const Row& row)
{
    if (const auto* text = std::get_if<ReceiptRenderer::TextRow>(&row))
        return text->text;
    if (const auto* columns = std::get_if<ReceiptRenderer::ColumnsRow>(&row))
        return columns->label + QStringLiteral(" | ") + columns->value;
    if (const auto* spacer = std::get_if<ReceiptRenderer::SpacerRow>(&row))
        return QStringLiteral("spacer %1").arg(spacer->height);
    return QStringLiteral("rule");
}

QStringList described(const ReceiptData& receipt)
{
    QStringList rows;
    for (const Row& row : ReceiptRenderer::layout(receipt))
        rows << describe(row);
    return rows;
}

QByteArray png(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

ReceiptData shortReceipt()
{
    ReceiptData receipt;
    receipt.businessName = QStringLiteral("Adwoa's Provisions");
    receipt.invoiceNumber = QStringLiteral("INV-20260309-0042");
    receipt.timestamp = QDateTime(QDate(2026, 3, 9), QTime(14, 5));
    receipt.cashierName = QStringLiteral("Ama");
    receipt.currencySymbol = QStringLiteral("₵");
    receipt.lines = {{QStringLiteral("Jasmine Rice 5kg"), 2, 95, 190, QString()}};
    receipt.subtotal = 190;
    receipt.total = 190;
    receipt.payments = {{QStringLiteral("Cash"), 190, 200, 10}};
    receipt.footer = QStringLiteral("Thank you for your business!");
    return receipt;
}

ReceiptData longReceipt(int lines)
{
    ReceiptData receipt = shortReceipt();
    receipt.lines.clear();
    for (int index = 1; index <= lines; ++index)
        receipt.lines.append({QStringLiteral("Item number %1").arg(index), 1.5, 4.2, 6.3, QStringLiteral("kg")});
    return receipt;
}

TEST(ReceiptLayout, RowsOfAVoidedRefundInOrder)
{
    ReceiptData receipt = shortReceipt();
    receipt.isRefund = true;
    receipt.voidNote = QStringLiteral("VOIDED");
    receipt.discountTotal = -1.5;
    receipt.pointsRedeemed = -5;
    receipt.pointsDiscount = -0.25;
    receipt.payments = {{QStringLiteral("Cash"), -190, 0, 0}};
    const QStringList rows = described(receipt);
    EXPECT_EQ(rows.mid(0, 3), (QStringList{"REFUND RECEIPT", "VOIDED", "Adwoa's Provisions"}));
    const QString date = QLocale::system().toString(receipt.timestamp, QStringLiteral("MMM d, yyyy h:mm AP"));
    // A negative discount prints with the minus, like a positive one.
    EXPECT_EQ(rows.mid(3), (QStringList{"spacer 4", "rule", "Receipt # | INV-20260309-0042", "Date | " + date,
                                        "Cashier | Ama", "rule", "Jasmine Rice 5kg", "  2 x ₵95.00 | ₵190.00",
                                        "rule", "Subtotal | ₵190.00", "Discount | -₵1.50", "Tax | ₵0.00",
                                        "TOTAL | ₵190.00", "spacer 2", "Cash | -₵190.00", "Points given back | 5",
                                        "rule", "spacer 4", "Thank you for your business!"}));
}

TEST(ReceiptLayout, OptionalRowsAppearOnlyWithTheirFigures)
{
    ReceiptData receipt = shortReceipt();
    receipt.addressLine = QStringLiteral("12 Ring Road");
    receipt.customerName = QStringLiteral("Kofi");
    receipt.pointsRedeemed = 100;
    receipt.pointsDiscount = 5;
    receipt.accountBalance = 80;
    receipt.footer.clear();
    const QStringList rows = described(receipt);
    for (const char* row : {"12 Ring Road", "Customer | Kofi", "Points redeemed (100) | -₵5.00", "  Change | ₵10.00",
                            "Account balance | ₵80.00"})
        EXPECT_TRUE(rows.contains(QString::fromUtf8(row))) << row;
    // The footer row stays, empty, so the bottom of every receipt is alike.
    EXPECT_EQ(rows.last(), QString());

    receipt.payments[0].changeGiven = 0;
    EXPECT_FALSE(described(receipt).contains(QStringLiteral("  Change | ₵0.00")));
}

TEST(ReceiptLayout, ALongLabelWrapsInItsSixtyPercentAndTheRowGrows)
{
    const double width = ReceiptRenderer::contentWidth(ReceiptRenderer::thermalPageWidth);
    const QFont& font = ReceiptRenderer::bodyFont();
    const ReceiptRenderer::ColumnWidths narrow = ReceiptRenderer::columnWidths(QStringLiteral("Cash"), font, width);
    EXPECT_LT(narrow.labelWidth, 0.6 * width);
    EXPECT_EQ(narrow.labelWidth, std::ceil(narrow.labelWidth));
    EXPECT_DOUBLE_EQ(narrow.valueWidth, width - narrow.labelWidth - 8);
    const auto height = [&](const QString& label) {
        return ReceiptRenderer::rowHeight(ReceiptRenderer::ColumnsRow{label, QStringLiteral("₵1.00"), font}, width);
    };
    // A label given the width it measured never breaks inside itself.
    const double oneLine = height(QStringLiteral("Cash"));
    EXPECT_GE(oneLine, 15);
    for (const char* shortLabel : {"Discount", "NHIL", "GETFund", "Subtotal", "Points balance", "  2 x ₵95.00"})
        EXPECT_EQ(height(QString::fromUtf8(shortLabel)), oneLine) << shortLabel;
    const QString label = QStringLiteral("Points redeemed on a very long customer loyalty account (100)");
    EXPECT_DOUBLE_EQ(ReceiptRenderer::columnWidths(label, font, width).labelWidth, 0.6 * width);
    EXPECT_GT(height(label), oneLine + 5);
}

TEST(ReceiptLayout, PageHeightHasAFloorAndThenFollowsTheContent)
{
    EXPECT_EQ(ReceiptRenderer::contentSize(shortReceipt(), false), QSizeF(612, 792));
    const QSizeF thermal = ReceiptRenderer::contentSize(shortReceipt(), true);
    EXPECT_DOUBLE_EQ(thermal.width(), 226.77);
    EXPECT_GE(thermal.height(), 200);

    const ReceiptData receipt = longReceipt(100);
    double height = ReceiptRenderer::textTop(receipt, 226.77) + 16;
    for (const Row& row : ReceiptRenderer::layout(receipt))
        height += ReceiptRenderer::rowHeight(row, ReceiptRenderer::contentWidth(226.77));
    EXPECT_DOUBLE_EQ(ReceiptRenderer::contentSize(receipt, true).height(), height);
    EXPECT_GT(height, 100 * 2 * 15);
    // A Letter receipt grows past one page rather than breaking into pages.
    EXPECT_GT(ReceiptRenderer::contentSize(receipt, false).height(), 792);
}

TEST(ReceiptLayout, TheLogoFillsItsBoxAndPushesTheTextDown)
{
    ReceiptData receipt = shortReceipt();
    QImage square(50, 50, QImage::Format_ARGB32);
    square.fill(Qt::red);
    receipt.logoPNG = png(square);
    const std::optional<QRectF> logo = ReceiptRenderer::logoRect(receipt, 226.77);
    ASSERT_TRUE(logo);
    // A small logo is scaled up until the height limit stops it, and centred between the margins.
    EXPECT_DOUBLE_EQ(logo->width(), 72);
    EXPECT_DOUBLE_EQ(logo->height(), 72);
    EXPECT_DOUBLE_EQ(logo->x(), (226.77 - 28 - 72) / 2 + 14);
    EXPECT_DOUBLE_EQ(logo->y(), 16);
    EXPECT_DOUBLE_EQ(ReceiptRenderer::textTop(receipt, 226.77), 16 + 72 + 8);

    receipt.logoPNG = png(square.scaled(800, 100));
    EXPECT_DOUBLE_EQ(ReceiptRenderer::logoRect(receipt, 612)->width(), 180);

    // Bytes whose header reads but which don't decode past it: no logo, and no room kept for one.
    receipt.logoPNG = png(square).left(40);
    EXPECT_FALSE(ReceiptRenderer::logoRect(receipt, 226.77));
    EXPECT_DOUBLE_EQ(ReceiptRenderer::textTop(receipt, 226.77), 16);
}

// The lowest row of the image with any ink on it.
int lowestInk(const QImage& image)
{
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200)
                return y;
        }
    }
    return -1;
}

TEST(ReceiptDrawing, DrawingEndsWhereTheMeasuredHeightSaysOnEveryResolution)
{
    const ReceiptData receipt = longReceipt(30);
    const QSizeF size = ReceiptRenderer::contentSize(receipt, true);
    for (const double dpi : {72.0, 203.0}) {
        const double scale = dpi / 72;
        QImage page((size * scale).toSize().grownBy({0, 0, 1, 1}), QImage::Format_RGB32);
        page.setDotsPerMeterX(int(std::lround(dpi / 0.0254)));
        page.setDotsPerMeterY(page.dotsPerMeterX());
        page.fill(Qt::white);
        QPainter painter(&page);
        ReceiptRenderer::draw(receipt, painter, size);
        painter.end();
        // The footer is the last ink, just above the bottom margin.
        const double lastInk = lowestInk(page) / scale;
        EXPECT_LT(lastInk, size.height() - 16) << dpi;
        EXPECT_GT(lastInk, size.height() - 16 - 15) << dpi;
    }
}

struct ReceiptPdf : ::testing::Test {
    QTemporaryDir folder;
    SystemReceiptPrinter printer;
    QString path = folder.filePath(QStringLiteral("receipt.pdf"));
};

TEST_F(ReceiptPdf, OnePageOfTheContentsSizeWithEveryRowsText)
{
    ReceiptData receipt = longReceipt(40);
    receipt.customerName = QStringLiteral("Kofi Boateng");
    for (const bool thermal : {true, false}) {
        printer.exportPDF(receipt, thermal, path);
        const QSizeF size = ReceiptRenderer::contentSize(receipt, thermal);
        const QString info = outputOf(QStringLiteral("pdfinfo"), {path});
        EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n")))) << info.toStdString();
        // Page sizes are kept in whole points.
        const QString pageSize = QStringLiteral("Page size:\\s+%1 x %2 pts")
                                     .arg(std::lround(size.width()))
                                     .arg(std::lround(size.height()));
        EXPECT_TRUE(info.contains(QRegularExpression(pageSize))) << info.toStdString();

        // The typeface joins "fi" into one glyph; compatibility form splits it again.
        const QString text = outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")})
                                 .normalized(QString::NormalizationForm_KC);
        for (const Row& row : ReceiptRenderer::layout(receipt)) {
            if (const auto* line = std::get_if<ReceiptRenderer::TextRow>(&row)) {
                EXPECT_TRUE(text.contains(line->text)) << line->text.toStdString();
            }
            if (const auto* columns = std::get_if<ReceiptRenderer::ColumnsRow>(&row)) {
                EXPECT_TRUE(text.contains(columns->label.trimmed())) << columns->label.toStdString();
                EXPECT_TRUE(text.contains(columns->value)) << columns->value.toStdString();
            }
        }
    }
}

TEST_F(ReceiptPdf, AFileThatCantBeWrittenIsRefusedAndNothingIsLeft)
{
    const QString intoMissingFolder = folder.filePath(QStringLiteral("gone/receipt.pdf"));
    try {
        printer.exportPDF(shortReceipt(), true, intoMissingFolder);
        FAIL() << "wrote into a folder that isn't there";
    } catch (const ReceiptPrintError& error) {
        EXPECT_EQ(error.description(), QStringLiteral("Could not create the PDF file."));
    }
    EXPECT_FALSE(QFile::exists(intoMissingFolder));
}

} // namespace
