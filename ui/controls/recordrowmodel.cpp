#include "ui/controls/recordrowmodel.h"

#include "ui/controls/recordrowdelegate.h"

RecordRowModel::RecordRowModel(int pageSize, Read read, QObject* parent)
    : RecordRowPages(pageSize, parent)
    , m_read(std::move(read))
{
}

int RecordRowModel::rowOf(const QUuid& id)
{
    return load([&](const RecordListRow& row) { return row.id == id; });
}

QStringList RecordRowModel::names() const
{
    QStringList names;
    for (const RecordListRow& row : rows())
        names.append(row.name);
    return names;
}

QVariant RecordRowModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RecordListRow& row = rows()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case RecordRowDelegate::detailRole:
        return row.detail;
    case RecordRowDelegate::inactiveRole:
        return row.isInactive;
    case Qt::AccessibleTextRole: {
        QStringList spoken{row.name};
        if (row.isInactive)
            spoken.append(QStringLiteral("Inactive"));
        if (!row.detail.isEmpty())
            spoken.append(row.detail);
        return spoken.join(QStringLiteral(", "));
    }
    default:
        return {};
    }
}
