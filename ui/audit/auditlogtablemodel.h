#pragma once

#include "access/approvalservice.h"
#include "ui/controls/keypagedmodel.h"

#include <QAbstractTableModel>

class AuditLogViewModel;

using AuditLogPages = KeyPagedModel<QAbstractTableModel, ApprovalService::LogRow>;

// The log's rows for a table view, newest first, a page at a time as the view scrolls down:
// a busy shop writes a hundred thousand of them over the years.
class AuditLogTableModel : public AuditLogPages {
    Q_OBJECT

public:
    explicit AuditLogTableModel(AuditLogViewModel& log, QObject* parent = nullptr);

    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

protected:
    QList<ApprovalService::LogRow> readPage(const ApprovalService::LogRow* after, int limit) override;

private:
    AuditLogViewModel& m_log;
};
