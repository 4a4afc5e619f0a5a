#include "ui/audit/auditlogtablemodel.h"

#include "reports/auditlogviewmodel.h"

namespace {
constexpr int amountColumn = 4;
}

AuditLogTableModel::AuditLogTableModel(AuditLogViewModel& log, QObject* parent)
    : AuditLogPages(AuditLogViewModel::pageSize, parent)
    , m_log(log)
{
    restart();
}

QList<ApprovalService::LogRow> AuditLogTableModel::readPage(const ApprovalService::LogRow* after, int limit)
{
    return m_log.page(after ? std::optional(std::pair(after->timestamp, after->id)) : std::nullopt, limit);
}

int AuditLogTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ApprovalService::logHeaders().size());
}

QVariant AuditLogTableModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QString cell = rows()[index.row()].cells.value(index.column());
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
