#include "ui/customers/customerlistmodel.h"

#include "ui/controls/recordrowdelegate.h"

#include <algorithm>

CustomerListModel::CustomerListModel(CustomersViewModel& customers, QObject* parent)
    : QAbstractListModel(parent)
    , m_customers(customers)
{
}

void CustomerListModel::reload()
{
    // One read of as many as were shown: the customer being looked at stays loaded, and finding
    // its row again needs no walk through the pages.
    const int shown = std::max(int(m_rows.size()), CustomersViewModel::pageSize);
    beginResetModel();
    m_rows = m_customers.page(nullptr, shown);
    m_atEnd = m_rows.size() < shown;
    endResetModel();
}

int CustomerListModel::rowOf(const QUuid& customerID)
{
    for (int row = 0;; ++row) {
        if (row == m_rows.size()) {
            if (!canFetchMore({}))
                return -1;
            fetchMore({});
        }
        if (row < m_rows.size() && m_rows[row].customer->id() == customerID)
            return row;
    }
}

int CustomerListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CustomerListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const CustomerRow& row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case RecordRowDelegate::detailRole:
        return row.detail();
    default:
        return {};
    }
}

bool CustomerListModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void CustomerListModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    const QList<CustomerRow> page = m_customers.page(m_rows.last().customer);
    m_atEnd = page.size() < CustomersViewModel::pageSize;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
    m_rows.append(page);
    endInsertRows();
}
