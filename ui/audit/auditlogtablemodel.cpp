#include "ui/audit/auditlogtablemodel.h"

#include "reports/auditlogviewmodel.h"

namespace {
constexpr int amountColumn = 4;
}

AuditLogTableModel::AuditLogTableModel(AuditLogViewModel& log, QObject* parent)
    : QAbstractTableModel(parent)
    , m_log(log)
{
    reload();
}

void AuditLogTableModel::reload()
{
    beginResetModel();
    m_rows = m_log.page(std::nullopt);
    m_atEnd = m_rows.size() < AuditLogViewModel::pageSize;
    endResetModel();
}

int AuditLogTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int AuditLogTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ApprovalService::logHeaders().size());
}

bool AuditLogTableModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void AuditLogTableModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    const QList<ApprovalService::LogRow> page = m_log.page(std::pair(m_rows.last().timestamp, m_rows.last().id));
    m_atEnd = page.size() < AuditLogViewModel::pageSize;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
    m_rows.append(page);
    endInsertRows();
}

QVariant AuditLogTableModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QString cell = m_rows[index.row()].cells.value(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return cell;
    case Qt::ToolTipRole:
        // Long reasons and details are cut at the column's edge; the whole text is a hover away.
        return cell.size() > 24 ? cell : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == amountColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    default:
        return {};
    }
}

QVariant AuditLogTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return ApprovalService::logHeaders().value(section);
}
