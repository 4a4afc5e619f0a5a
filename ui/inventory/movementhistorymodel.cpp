#include "ui/inventory/movementhistorymodel.h"

#include "money/quantity.h"
#include "stock/inventoryviewmodel.h"

#include <QLocale>

namespace {
QString signedQuantity(double change, SellingUnit unit)
{
    const QString text = Quantity::format(change, unit);
    return change > 0 ? u'+' + text : text;
}

QString whenText(const QDateTime& timestamp)
{
    return QLocale(QLocale::English, QLocale::UnitedStates)
        .toString(timestamp.toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
}
} // namespace

MovementHistoryModel::MovementHistoryModel(InventoryViewModel& inventory, QObject* parent)
    : QAbstractListModel(parent)
    , m_inventory(inventory)
{
}

void MovementHistoryModel::setProduct(const Ref<Product>& product)
{
    m_product = product;
    reload();
}

void MovementHistoryModel::reload()
{
    beginResetModel();
    m_rows.clear();
    m_atEnd = !m_product;
    if (m_product) {
        m_rows = m_inventory.movements(m_product);
        m_atEnd = m_rows.size() < InventoryViewModel::movementPageSize;
    }
    endResetModel();
}

int MovementHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

bool MovementHistoryModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void MovementHistoryModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    const QList<Ref<InventoryMovement>> page = m_inventory.movements(m_product, m_rows.last());
    m_atEnd = page.size() < InventoryViewModel::movementPageSize;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
    m_rows.append(page);
    endInsertRows();
}

QVariant MovementHistoryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const InventoryMovement& movement = *m_rows[index.row()];
    const SellingUnit unit = m_product->sellingUnit();
    switch (role) {
    case typeRole:
        return InventoryMovementTypes::label(movement.type());
    case changeRole:
        return signedQuantity(movement.quantityChange(), unit);
    case stockAfterRole:
        return QStringLiteral("Stock after %1").arg(Quantity::format(movement.stockAfter(), unit));
    case detailRole: {
        QStringList parts{whenText(movement.timestamp())};
        for (const QString& part : {movement.supplier(), movement.purchaseOrderNumber(), movement.reason()}) {
            if (!part.isEmpty())
                parts << part;
        }
        return parts.join(QStringLiteral(" · "));
    }
    case costLineRole: {
        const std::optional<QString> line = movement.costLine();
        return line ? QVariant(*line) : QVariant();
    }
    case directionRole:
        return (movement.quantityChange() > 0) - (movement.quantityChange() < 0);
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole: {
        // One sentence for screen readers and anyone copying the row.
        QStringList parts{data(index, typeRole).toString(), data(index, changeRole).toString(),
                          data(index, stockAfterRole).toString(), data(index, detailRole).toString()};
        if (const QVariant cost = data(index, costLineRole); cost.isValid())
            parts << cost.toString();
        return parts.join(QStringLiteral(", "));
    }
    default:
        return {};
    }
}
