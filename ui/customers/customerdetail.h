#pragma once

#include "access/accountapprovals.h"
#include "customers/customerdetailmodel.h"

#include <QWidget>

class AppEnvironment;
class ErrorLabel;
class FormFooter;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class Section;

// One customer beside the Customers list: contact and credit edits kept until "Save", the points
// and their history, the account with its ledger, and the purchases a page at a time. Made anew
// for each customer chosen. "Save" stays in view above the sections, which scroll. A cashier's
// change of credit, adjustment of points, opening balance or delete waits for an admin's PIN.
class CustomerDetail : public QWidget {
    Q_OBJECT

public:
    enum class Field { name, phone, email, address, creditLimit };

    CustomerDetail(AppEnvironment& environment, SessionStore& session, const Ref<Customer>& customer,
                   QWidget* parent = nullptr);

    CustomerDetailModel& model() { return m_model; }
    Ref<Customer> customer() const { return m_model.customer(); }
    QLineEdit* field(Field which) const;
    QCheckBox* allowCreditSwitch() const { return m_allowCredit; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* deleteButton() const { return m_delete; }
    QPushButton* adjustPointsButton() const { return m_adjustPoints; }
    QPushButton* receivePaymentButton() const { return m_receivePayment; }
    QPushButton* openingBalanceButton() const { return m_openingBalance; }
    QPushButton* morePurchasesButton() const { return m_morePurchases; }
    QLabel* pointsBalanceLabel() const { return m_pointsBalance; }
    QLabel* balanceOwedLabel() const { return m_balanceOwed; }
    QLabel* availableCreditLabel() const { return m_availableCredit; }
    QLabel* ageLabel() const { return m_age; }
    QTableWidget* pointsHistory() const { return m_pointsHistory; }
    QTableWidget* accountHistory() const { return m_accountHistory; }
    QTableWidget* purchases() const { return m_purchases; }
    ErrorLabel* errorLabel() const { return m_error; }
    // Why the credit limit as typed can't be saved; hidden while it can.
    ErrorLabel* creditLimitErrorLabel() const { return m_creditLimitError; }

    // "Save": at once, or through the approval dialog when a cashier changed the credit. True once
    // nothing is left unsaved.
    bool save();
    // Puts the caret in the name with it selected, for a customer just added.
    void focusName();

Q_SIGNALS:
    // The customer is gone; the detail is of no more use.
    void customerDeleted();

protected:
    // Tab follows the form as it reads.
    bool focusNextPrevChild(bool next) override;

private:
    Section* contactSection();
    Section* loyaltySection();
    Section* accountSection();
    Section* purchaseSection();
    void refresh();
    // What can be done depends on whether the customer is in the store yet.
    void showActions();
    void refreshPoints();
    void refreshAccount();
    void refreshPurchases(int count);
    void openAdjustPoints();
    void openReceivePayment();
    void openOpeningBalance();
    void confirmDelete();
    // Raises the approval dialog where the change waits for an admin.
    void askAnAdmin(std::optional<ApprovalRequest> request);
    QString money(double amount) const;

    AppEnvironment& m_environment;
    AccountsService& m_accounts;
    SessionStore& m_session;
    AccountApprovals m_approvals;
    CustomerDetailModel m_model;
    int m_purchasesShown = 0;

    QLabel* m_title;
    ErrorLabel* m_error;
    ErrorLabel* m_creditLimitError;
    FormFooter* m_footer;
    QPushButton* m_save;
    QPushButton* m_delete;
    QList<QLineEdit*> m_fields; // in Field order
    QCheckBox* m_allowCredit;
    QLabel* m_pointsBalance;
    QPushButton* m_adjustPoints;
    QTableWidget* m_pointsHistory;
    QLabel* m_noPoints;
    QLabel* m_balanceOwed;
    QLabel* m_availableCredit;
    QLabel* m_age;
    QPushButton* m_receivePayment;
    QPushButton* m_openingBalance;
    QTableWidget* m_accountHistory;
    QLabel* m_noAccountHistory;
    QTableWidget* m_purchases;
    QLabel* m_noPurchases;
    QPushButton* m_morePurchases;
};
