#pragma once

#include "ui/refunds/refundviewmodel.h"

#include <QWidget>

class ErrorLabel;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;
class RefundLineRow;
class SegmentedControl;

// The "Refunds" section: find the original receipt by its invoice number, choose what comes back,
// how the money goes back and why, and process it, with an admin's PIN where the settings want
// one; the refund's receipt is shown once it is written.
class RefundView : public QWidget {
    Q_OBJECT

public:
    RefundView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    RefundViewModel& model() { return m_model; }
    QLineEdit* receiptField() const { return m_receipt; }
    QPushButton* findButton() const { return m_find; }
    bool isShowingSale() const;
    QLabel* originalTotalLabel() const { return m_originalTotal; }
    QLabel* customerLabel() const { return m_customer; }
    QList<RefundLineRow*> lineRows() const { return m_lineRows; }
    SegmentedControl* methodPicker() const { return m_method; }
    QLineEdit* reasonField() const { return m_reason; }
    QLabel* amountLabel() const { return m_amount; }
    QPushButton* processButton() const { return m_process; }
    ErrorLabel* errorLabel() const { return m_error; }

    // Decides on approval, then processes; shows the refund's receipt once it is written.
    void process();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* salePage();
    void showSale();
    void showAmount();
    void showReceipt();
    QString money(double amount) const;

    AppEnvironment& m_environment;
    SessionStore& m_session;
    RefundViewModel m_model;

    QLineEdit* m_receipt;
    QPushButton* m_find;
    ErrorLabel* m_error;
    QStackedWidget* m_pages;
    QLabel* m_invoice;
    QLabel* m_originalTotal;
    QLabel* m_customer;
    QVBoxLayout* m_lines;
    QList<RefundLineRow*> m_lineRows;
    SegmentedControl* m_method;
    QLineEdit* m_reason;
    QLabel* m_amount;
    QPushButton* m_process;
};
