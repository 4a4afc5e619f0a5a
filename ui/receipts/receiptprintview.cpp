#include "ui/receipts/receiptprintview.h"

#include "receipts/receiptrenderer.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

ReceiptPrintView::ReceiptPrintView(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Receipt preview"));
}

void ReceiptPrintView::setReceipt(const ReceiptData& receipt, bool useThermalWidth)
{
    m_receipt = receipt;
    m_pageSize = ReceiptRenderer::contentSize(receipt, useThermalWidth);
    setFixedSize(sizeHint());
    update();
}

void ReceiptPrintView::setLargestWidth(int pixels)
{
    m_largestWidth = pixels;
    setFixedSize(sizeHint());
    update();
}

double ReceiptPrintView::pixelsPerPoint() const
{
    const double actualSize = logicalDpiX() / 72.0;
    if (m_pageSize.isEmpty())
        return actualSize;
    return std::min(actualSize, m_largestWidth / m_pageSize.width());
}

QSize ReceiptPrintView::sizeHint() const
{
    return QSize(int(std::ceil(m_pageSize.width() * pixelsPerPoint())),
                 int(std::ceil(m_pageSize.height() * pixelsPerPoint())));
}

void ReceiptPrintView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    // The renderer scales points to the screen's resolution; a smaller preview is scaled down further.
    const double zoom = pixelsPerPoint() / (logicalDpiX() / 72.0);
    painter.scale(zoom, zoom);
    ReceiptRenderer::draw(m_receipt, painter, m_pageSize);
}
