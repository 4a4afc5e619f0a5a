#pragma once

#include "customers/receiveaccountpaymentmodel.h"
#include "ui/controls/sheet.h"

class QLabel;
class QLineEdit;
class SegmentedControl;

// "Receive Payment" over the customer's detail: money paid towards what the account owes. Stays
// open with the reason when the payment is refused.
class ReceiveAccountPaymentSheet : public Sheet {
    Q_OBJECT

public:
    ReceiveAccountPaymentSheet(AccountsService& accounts, SessionStore& session,
                               const Ref<Customer>& customer, double owed, QWidget* parent = nullptr);

    ReceiveAccountPaymentModel& model() { return m_model; }
    QLineEdit* amountField() const { return m_amount; }
    QPushButton* fullBalanceButton() const { return m_fullBalance; }
    SegmentedControl* methodPicker() const { return m_method; }
    QLineEdit* referenceField() const { return m_reference; }
    QLabel* tillNoteLabel() const { return m_tillNote; }
    QPushButton* recordButton() const { return primaryButton(); }

private:
    void primaryAction() override;
    void showTillNote();

    ReceiveAccountPaymentModel m_model;
    QLineEdit* m_amount;
    QPushButton* m_fullBalance;
    SegmentedControl* m_method;
    QLineEdit* m_reference;
    QLabel* m_tillNote;
};
