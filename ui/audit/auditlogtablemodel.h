#pragma once

#include "access/approvalservice.h"

#include <QAbstractTableModel>

class AuditLogViewModel;

// The log's rows for a table view, newest first, a page at a time as the view scrolls down:
// a busy shop writes a hundred thousand of them over the years.
class AuditLogTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit AuditLogTableModel(AuditLogViewModel& log, QObject* parent = nullptr);

    // Starts again from the newest row, after a filter or the log changed.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    AuditLogViewModel& m_log;
    QList<ApprovalService::LogRow> m_rows;
    bool m_atEnd = true;
};
