#pragma once

#include "customers/customersviewmodel.h"

#include <QAbstractListModel>

// The customers list, a page at a time as the view scrolls to its end: a shop keeps thousands.
class CustomerListModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit CustomerListModel(CustomersViewModel& customers, QObject* parent = nullptr);

    // Reads the list again from the top, as far down as it was loaded, after the customers or the
    // search changed.
    void reload();
    // The row of the customer, loading pages until it is found; -1 when the list doesn't hold it.
    int rowOf(const QUuid& customerID);
    Ref<Customer> customer(int row) const { return m_rows.value(row).customer; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    CustomersViewModel& m_customers;
    QList<CustomerRow> m_rows;
    bool m_atEnd = true;
};
