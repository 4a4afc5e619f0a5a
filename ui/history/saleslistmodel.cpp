#include "ui/history/saleslistmodel.h"

#include "money/currency.h"
#include "refusal/refusal.h"

#include <QLocale>

namespace {
QString badgeText(const SalesHistory::Row& row)
{
    // An unknown status reads as completed, which has no badge.
    switch (row.status().value_or(SaleStatus::completed)) {
    case SaleStatus::completed:
        return {};
    case SaleStatus::partiallyRefunded:
        return QStringLiteral("Partially Refunded");
    case SaleStatus::refunded:
        return QStringLiteral("Refunded");
    case SaleStatus::voided:
        return QStringLiteral("Voided");
    }
    Q_UNREACHABLE();
}
} // namespace

SalesListModel::SalesListModel(ModelContext& context, QObject* parent)
    : QAbstractListModel(parent)
    , m_history(context)
    , m_symbol(Currency::fixedSign)
{
}

void SalesListModel::setCurrencySymbol(const QString& symbol)
{
    m_symbol = symbol;
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1), {totalRole});
}

QList<SalesHistory::Row> SalesListModel::read(const std::optional<SalesHistory::Key>& after, int limit)
{
    std::optional<QString> error;
    QList<SalesHistory::Row> rows;
    try {
        rows = m_history.page(m_filter, after, limit);
    } catch (const Refusal& refusal) {
        error = refusal.description();
    }
    if (error != m_error) {
        m_error = error;
        Q_EMIT errorMessageChanged();
    }
    return rows;
}

void SalesListModel::setFilter(const SalesHistory::Filter& filter)
{
    m_filter = filter;
    beginResetModel();
    m_rows = read(std::nullopt, SalesHistory::pageSize);
    m_atEnd = m_rows.size() < SalesHistory::pageSize;
    endResetModel();
}

void SalesListModel::reload()
{
    // One read of all that was shown, so that the list stays where it was scrolled to.
    const int shown = std::max(int(m_rows.size()), SalesHistory::pageSize);
    beginResetModel();
    m_rows = read(std::nullopt, shown);
    m_atEnd = m_rows.size() < shown;
    endResetModel();
}

int SalesListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

bool SalesListModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void SalesListModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    const QList<SalesHistory::Row> page = read(m_rows.last().key, SalesHistory::pageSize);
    m_atEnd = page.size() < SalesHistory::pageSize;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
    m_rows.append(page);
    endInsertRows();
}

int SalesListModel::rowOf(const QUuid& saleID) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].id() == saleID)
            return row;
    }
    return -1;
}

QVariant SalesListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const SalesHistory::Row& row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.invoiceNumber;
    case idRole:
        return row.id();
    case whenRole:
        return QLocale(QLocale::English, QLocale::UnitedStates)
            .toString(row.timestamp.toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
    case cashierRole:
        return row.cashierName;
    case totalRole:
        return Currency::format(row.total, m_symbol);
    case badgeRole:
        return badgeText(row);
    case isVoidedRole:
        return row.status() == SaleStatus::voided;
    case Qt::AccessibleTextRole: {
        QStringList parts{row.invoiceNumber, data(index, whenRole).toString(), row.cashierName,
                          data(index, totalRole).toString()};
        if (const QString badge = badgeText(row); !badge.isEmpty())
            parts << badge;
        return parts.join(QStringLiteral(", "));
    }
    default:
        return {};
    }
}
