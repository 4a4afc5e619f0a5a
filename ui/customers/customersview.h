#pragma once

#include "customers/accountsservice.h"
#include "customers/customersviewmodel.h"
#include "ui/navigation/editingscreen.h"

#include <QUuid>
#include <QWidget>

class AppEnvironment;
class CustomerDetail;
class CustomerListModel;
class DetailPages;
class ListDetailBody;
class QLineEdit;
class QPushButton;
class QTableView;
class SearchListPane;

// The "Customers" section: the searchable list with what each customer owes, "New Customer", and
// the chosen customer's detail beside the list. Open to cashiers as well as admins. Follows every
// saved change to customers, sales and account payments, whoever made it. Leaving unsaved edits
// (another customer, a new one, another screen) asks first.
class CustomersView : public QWidget, public FormScreen {
    Q_OBJECT

public:
    CustomersView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    CustomersViewModel& model() { return m_model; }
    QLineEdit* searchField() const { return m_search; }
    QPushButton* newCustomerButton() const { return m_newCustomer; }
    QTableView* customerList() const { return m_list; }
    CustomerListModel& customerRows() const { return *m_rows; }
    // The chosen customer's detail; null while none is chosen.
    CustomerDetail* detail() const { return m_detail; }
    bool isShowingNoCustomers() const;
    // Chooses the customer in the list, as a click would; false when it isn't listed.
    bool selectCustomer(const QUuid& customerID);

    bool hasUnsavedEdits() const override;

protected:
    QString editedName() const override;
    bool saveEdits() override;
    void discardEdits() override;

private:
    void refreshList();
    // Shows the customer, first asking whether to save edits to the one shown.
    void chooseCustomer(const Ref<Customer>& customer);
    void showDetail(const Ref<Customer>& customer);
    void addCustomer();

    AppEnvironment& m_environment;
    ModelContext& m_context;
    SessionStore& m_session;
    AccountsService& m_accounts;
    CustomersViewModel m_model;
    CustomerListModel* m_rows;
    bool m_rebuilding = false;

    QLineEdit* m_search;
    QPushButton* m_newCustomer;
    QTableView* m_list;
    SearchListPane* m_listPane;
    DetailPages* m_detailPages;
    ListDetailBody* m_body;
    CustomerDetail* m_detail = nullptr;
};
