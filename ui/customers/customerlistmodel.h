#pragma once

#include "customers/customersviewmodel.h"
#include "ui/controls/keypagedmodel.h"

#include <QAbstractListModel>

using CustomerPages = KeyPagedModel<QAbstractListModel, CustomerRow>;

// The customers list, a page at a time as the view scrolls to its end: a shop keeps thousands.
class CustomerListModel : public CustomerPages {
    Q_OBJECT

public:
    explicit CustomerListModel(CustomersViewModel& customers, QObject* parent = nullptr);

    // The row of the customer, loading pages until it is found; -1 when the list doesn't hold it.
    int rowOf(const QUuid& customerID);
    Ref<Customer> customer(int row) const { return rows().value(row).customer; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QList<CustomerRow> readPage(const CustomerRow* after, int limit) override;

private:
    CustomersViewModel& m_customers;
};
