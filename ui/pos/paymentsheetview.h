#pragma once

#include "pos/paymentsheetmodel.h"
#include "ui/controls/sheet.h"

#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QUuid>

class ErrorLabel;
class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QVBoxLayout;
class ScannerBurstFilter;
class SegmentedControl;

// The payment sheet over the workspace: how the customer pays, the change, points to redeem.
// Everything it decides is the model's; this binds keys and fields to it. The workspace closes
// the model once the sale is through or cancelled, and the sheet closes with it.
//
// Keys: Return completes the sale, Escape cancels, Alt+1 to Alt+5 choose the mode, F1 to F4 the
// quick-cash amounts. A barcode scanned into the sheet is undone instead of completing the sale.
class PaymentSheetView : public Sheet {
    Q_OBJECT

public:
    PaymentSheetView(PaymentSheetModel& model, QWidget* parent = nullptr);

    static QString scanRefusedMessage()
    {
        return QStringLiteral("Finish or cancel the payment before scanning more items.");
    }

    SegmentedControl* modePicker() const { return m_modes; }
    QLineEdit* cashTenderedField() const { return m_cashTendered; }
    QList<QPushButton*> quickCashButtons() const { return m_quickCash; }
    QLabel* changeDueLabel() const { return m_changeDue; }
    QLabel* remainingLabel() const { return m_remaining; }
    QPushButton* addPaymentMethodButton() const { return m_addRow; }
    QPushButton* completeButton() const { return primaryButton(); }
    // The split rows' fields, top to bottom.
    struct SplitRowWidgets {
        QUuid id;
        QComboBox* method;
        QLineEdit* amount;
        QLineEdit* tendered;
        QLabel* tenderedCaption;
        QPushButton* remove;
        ErrorLabel* problem;
    };
    const QList<SplitRowWidgets>& splitRowWidgets() const { return m_rows; }
    QLineEdit* pointsField() const { return m_pointsField; }
    QPushButton* useMostButton() const { return m_useMost; }
    QPushButton* redeemButton() const { return m_redeem; }
    QPushButton* removePointsButton() const { return m_removePoints; }
    QMessageBox* pointsReminder() const { return m_reminder; }

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Once: the workspace may let go of the model from inside Cancel or Complete Sale.
    void finish(int result);
    void primaryAction() override;
    QWidget* makeCashPage();
    QWidget* makeChargePage(const QString& fieldTitle, QLineEdit*& reference, QLabel*& sentence);
    QWidget* makeOnAccountPage();
    QWidget* makeSplitPage();
    QWidget* makePointsSection();
    void chooseMode(PaymentSheetModel::Mode mode);
    void focusMode();
    void fitHeight();
    void showFields();
    void showInputs();
    void showSplitRows();
    void showPoints();
    void showReminder();
    void refuseScan();
    QString money(double amount) const;

    // Null once the workspace has let go of the model.
    QPointer<PaymentSheetModel> m_model;
    ScannerBurstFilter* m_scanner;
    QLabel* m_totalDue;
    SegmentedControl* m_modes;
    QStackedWidget* m_pages;
    // Cash.
    QLineEdit* m_cashTendered;
    ErrorLabel* m_cashProblem;
    QList<QPushButton*> m_quickCash;
    QList<double> m_quickCashAmounts;
    QLabel* m_changeDue;
    // Card and mobile money.
    QLabel* m_cardSentence;
    QLineEdit* m_cardReference;
    QLabel* m_mobileSentence;
    QLineEdit* m_mobileReference;
    // On account.
    QWidget* m_accountDetails;
    QLabel* m_accountNote;
    QLabel* m_owesNow;
    QLabel* m_willOwe;
    QLabel* m_creditLimit;
    QLineEdit* m_accountReference;
    QLabel* m_accountProblem;
    // Split.
    QVBoxLayout* m_rowsLayout;
    QList<SplitRowWidgets> m_rows;
    QPushButton* m_addRow;
    QLabel* m_remaining;
    // Points.
    QWidget* m_points;
    QLabel* m_pointsHeader;
    QLabel* m_pointsWorth;
    QLabel* m_redeeming;
    QPushButton* m_removePoints;
    QLabel* m_pointsOffer;
    QWidget* m_redeemRow;
    QLineEdit* m_pointsField;
    QPushButton* m_useMost;
    QPushButton* m_redeem;
    QPointer<QMessageBox> m_reminder;
    bool m_finished = false;
};
