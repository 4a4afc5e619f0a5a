#pragma once

#include "customers/customersviewmodel.h"
#include "ui/customers/customerlistmodel.h"

#include <QFrame>

#include <functional>

class QLineEdit;
class QListView;
class QPushButton;

// The cart's customer, chosen from a small window under the button: type to narrow the list,
// Return or a click takes the row, "Clear Customer" takes the customer off the sale. The list is
// read a page at a time, as a shop may keep thousands of customers.
class CustomerPicker : public QFrame {
    Q_OBJECT

public:
    using Choose = std::function<void(const Ref<Customer>& customer)>;

    CustomerPicker(CustomersViewModel& customers, Choose choose, QWidget* parent);

    // Opens under `anchor`, the field ready for typing; it deletes itself once closed.
    static CustomerPicker* popUp(CustomersViewModel& customers, Choose choose, QWidget* anchor);

    QLineEdit* searchField() const { return m_search; }
    QListView* list() const { return m_list; }
    QPushButton* clearButton() const { return m_clear; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void pick(const Ref<Customer>& customer);

    CustomersViewModel& m_customers;
    CustomerListModel m_model;
    Choose m_choose;
    QLineEdit* m_search;
    QListView* m_list;
    QPushButton* m_clear;
};
