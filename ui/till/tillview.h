#pragma once

#include "till/tillviewmodel.h"
#include "ui/till/shiftdetailsheet.h"

#include <QPointer>
#include <QScrollArea>

class AppEnvironment;
class ErrorLabel;
class NumericKeypad;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QTableView;
class SegmentedControl;
class ShiftHistoryModel;

// The "Till & Shifts" section: opening the till with a float, the open shift's figures, cash paid
// in and out, closing against the counted cash, and the closed shifts with the detail of each. Open to cashiers; follows
// every saved change to shifts, movements, sales and account payments, whoever made it.
class TillView : public QScrollArea {
    Q_OBJECT

public:
    TillView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    TillViewModel& model() { return m_model; }
    bool isShowingOpenShift() const;
    QLineEdit* openingFloatField() const { return m_openingFloat; }
    NumericKeypad* keypad() const { return m_keypad; }
    QPushButton* openButton() const { return m_open; }
    QLabel* sinceLabel() const { return m_since; }
    QLabel* openingFloatFigure() const { return m_floatFigure; }
    QLabel* cashSalesFigure() const { return m_cashSalesFigure; }
    // Shown only while customers have paid cash into their accounts during the shift.
    QLabel* accountCashFigure() const { return m_accountCashFigure; }
    QLabel* expectedCashFigure() const { return m_expectedFigure; }
    SegmentedControl* payTypePicker() const { return m_payType; }
    QLineEdit* payAmountField() const { return m_payAmount; }
    QLineEdit* payReasonField() const { return m_payReason; }
    QPushButton* recordMovementButton() const { return m_recordMovement; }
    QTableWidget* movementList() const { return m_movements; }
    QLineEdit* countedCashField() const { return m_countedCash; }
    QLineEdit* notesField() const { return m_notes; }
    QPushButton* closeButton() const { return m_close; }
    // What the last close came to, until the next shift opens.
    QWidget* closedResult() const { return m_closedResult; }
    // Newest first, a page at a time; choosing a row opens its detail.
    QTableView* historyList() const { return m_history; }
    ShiftHistoryModel* historyModel() const { return m_historyModel; }
    // The detail of the shift chosen in the history, while it is open.
    ShiftDetailSheet* detailSheet() const { return m_detailSheet; }
    ErrorLabel* errorLabel() const { return m_error; }

private:
    QWidget* openForm();
    QWidget* openShiftPage();
    QWidget* historySection();
    void refresh();
    void refreshOpenShift(const Ref<TillShift>& shift);
    void refreshHistory();
    void openShiftDetail(int row);
    void showClosedResult();
    QString money(double amount) const;

    SessionStore& m_session;
    TillViewModel m_model;
    ModelContext& m_detailSource;
    Ref<TillShift> m_lastClosed;

    ErrorLabel* m_error;
    QLabel* m_backupMessage;
    QWidget* m_closedResult;
    QLabel* m_closedExpected;
    QLabel* m_closedCounted;
    QLabel* m_closedVariance;
    QWidget* m_openFormPage;
    QWidget* m_openShiftPage;
    QLineEdit* m_openingFloat;
    NumericKeypad* m_keypad;
    QPushButton* m_open;
    QLabel* m_since;
    QLabel* m_floatFigure;
    QLabel* m_cashSalesFigure;
    QLabel* m_accountCashFigure;
    QLabel* m_expectedFigure;
    SegmentedControl* m_payType;
    QLineEdit* m_payAmount;
    QLineEdit* m_payReason;
    QPushButton* m_recordMovement;
    QTableWidget* m_movements;
    QLineEdit* m_countedCash;
    QLineEdit* m_notes;
    QPushButton* m_close;
    QTableView* m_history;
    ShiftHistoryModel* m_historyModel;
    QPointer<ShiftDetailSheet> m_detailSheet;
    QLabel* m_noHistory;
};
