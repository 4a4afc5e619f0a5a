#include "receipts/receiptrenderer.h"

#include "receipts/receiptprinting.h"
#include "receiptscene.h"

#include <QRegularExpression>
#include <QTemporaryDir>

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

TEST(ReceiptPdf, OnePageWithEveryRowsText)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("receipt.pdf"));
    const ReceiptData receipt = longReceipt(40);
    SystemReceiptPrinter().exportPDF(receipt, true, path);
    const QRegularExpression onePage(QStringLiteral("Pages:\\s+1\\n"));
    EXPECT_TRUE(outputOf(QStringLiteral("pdfinfo"), {path}).contains(onePage));
    // The typeface joins "fi" into one glyph; compatibility form splits it again.
    const QString text = outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")})
                             .normalized(QString::NormalizationForm_KC);
    for (const Row& row : ReceiptRenderer::layout(receipt)) {
        const auto* line = std::get_if<ReceiptRenderer::TextRow>(&row);
        const auto* columns = std::get_if<ReceiptRenderer::ColumnsRow>(&row);
        const QString shown = line ? line->text : columns ? columns->value : QString();
        EXPECT_TRUE(text.contains(shown)) << shown.toStdString();
    }
}

} // namespace
