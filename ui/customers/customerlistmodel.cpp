#include "ui/customers/customerlistmodel.h"

#include "ui/controls/recordrowdelegate.h"

CustomerListModel::CustomerListModel(CustomersViewModel& customers, QObject* parent)
    : CustomerPages(CustomersViewModel::pageSize, parent)
    , m_customers(customers)
{
}

QList<CustomerRow> CustomerListModel::readPage(const CustomerRow* after, int limit)
{
    return m_customers.page(after ? after->customer : nullptr, limit);
}

int CustomerListModel::rowOf(const QUuid& customerID)
{
    return load([&](const CustomerRow& row) { return row.customer->id() == customerID; });
}

QVariant CustomerListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rows().size())
        return {};
    const CustomerRow& row = rows()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case RecordRowDelegate::detailRole:
        return row.detail();
    default:
        return {};
    }
}
