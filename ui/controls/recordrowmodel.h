#pragma once

#include "ui/controls/keypagedmodel.h"
#include "viewmodel/recordlistrow.h"

#include <QAbstractListModel>

#include <functional>

using RecordRowPages = KeyPagedModel<QAbstractListModel, RecordListRow>;

// A list of records in the roles of RecordRowDelegate, read a page at a time through the screen's
// view model as the list scrolls.
class RecordRowModel : public RecordRowPages {
    Q_OBJECT

public:
    // The view model's page: at most `limit` rows after `after`, or from the first without it.
    using Read = std::function<QList<RecordListRow>(const RecordListRow* after, int limit)>;

    RecordRowModel(int pageSize, Read read, QObject* parent = nullptr);

    // The row of the record, loading pages until it is found; -1 when the list doesn't hold it.
    int rowOf(const QUuid& id);
    QUuid recordID(int row) const { return rows().value(row).id; }
    // The names of the rows loaded, in order.
    QStringList names() const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QList<RecordListRow> readPage(const RecordListRow* after, int limit) override
    {
        return m_read(after, limit);
    }

private:
    Read m_read;
};
