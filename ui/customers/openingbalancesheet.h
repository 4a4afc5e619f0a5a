#pragma once

#include "access/accountapprovals.h"
#include "customers/openingbalancemodel.h"
#include "ui/controls/sheet.h"

class AppEnvironment;
class ErrorLabel;
class QDateEdit;
class QLineEdit;

// "Opening Balance" over the customer's detail: what they owed from the credit book, and since
// when. Stays open with the reason when it is refused; a cashier's waits for an admin's PIN.
class OpeningBalanceSheet : public Sheet {
    Q_OBJECT

public:
    OpeningBalanceSheet(AppEnvironment& environment, SessionStore& session, const Ref<Customer>& customer,
                        QWidget* parent = nullptr);

    OpeningBalanceModel& model() { return m_model; }
    QLineEdit* amountField() const { return m_amount; }
    ErrorLabel* amountErrorLabel() const { return m_amountError; }
    QDateEdit* owedSinceField() const { return m_owedSince; }
    QLineEdit* noteField() const { return m_note; }
    QPushButton* saveButton() const { return primaryButton(); }

private:
    void primaryAction() override;

    AppEnvironment& m_environment;
    AccountApprovals m_approvals;
    OpeningBalanceModel m_model;
    QLineEdit* m_amount;
    ErrorLabel* m_amountError;
    QDateEdit* m_owedSince;
    QLineEdit* m_note;
};
