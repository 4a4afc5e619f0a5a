#pragma once

#include "receipts/receiptdata.h"

#include <QWidget>

// A receipt on screen, drawn by the same renderer as the paper and the PDF, at the page width
// the store prints on.
class ReceiptPrintView : public QWidget {
    Q_OBJECT

public:
    explicit ReceiptPrintView(QWidget* parent = nullptr);

    const ReceiptData& receipt() const { return m_receipt; }
    void setReceipt(const ReceiptData& receipt, bool useThermalWidth);
    // A wider page is shown smaller, so that the whole width is in view.
    void setLargestWidth(int pixels);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double pixelsPerPoint() const;

    ReceiptData m_receipt;
    QSizeF m_pageSize{0, 0}; // in points
    int m_largestWidth = QWIDGETSIZE_MAX;
};
