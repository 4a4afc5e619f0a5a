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
    : SalePages(SalesHistory::pageSize, parent)
    , m_history(context)
    , m_symbol(Currency::fixedSign)
{
}

void SalesListModel::setCurrencySymbol(const QString& symbol)
{
    m_symbol = symbol;
    if (!rows().isEmpty())
        Q_EMIT dataChanged(index(0), index(int(rows().size()) - 1), {totalRole});
}

QList<SalesHistory::Row> SalesListModel::readPage(const SalesHistory::Row* after, int limit)
{
    std::optional<QString> error;
    QList<SalesHistory::Row> page;
    try {
        page = m_history.page(m_filter, after ? std::optional(after->key) : std::nullopt, limit);
    } catch (const Refusal& refusal) {
        error = refusal.description();
    }
    if (error != m_error) {
        m_error = error;
        Q_EMIT errorMessageChanged();
    }
    return page;
}

void SalesListModel::setFilter(const SalesHistory::Filter& filter)
{
    m_filter = filter;
    restart();
}

int SalesListModel::rowOf(const QUuid& saleID) const
{
    return loaded([&](const SalesHistory::Row& row) { return row.id() == saleID; });
}

QVariant SalesListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const SalesHistory::Row& row = rows()[index.row()];
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
