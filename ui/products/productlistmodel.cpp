#include "ui/products/productlistmodel.h"

#include "ui/products/productlistdelegate.h"

ProductListModel::ProductListModel(ProductsViewModel& products, QObject* parent)
    : ProductPages(ProductsViewModel::pageSize, parent)
    , m_products(products)
{
}

QList<ProductListRow> ProductListModel::readPage(const ProductListRow* after, int limit)
{
    return m_products.page(after, limit);
}

int ProductListModel::rowOf(const QUuid& productID)
{
    return load([&](const ProductListRow& row) { return row.id == productID; });
}

void ProductListModel::showEdited(const std::optional<ProductListRow>& edited)
{
    const QUuid before = m_edited ? m_edited->id : QUuid();
    m_edited = edited;
    for (const QUuid& id : {before, edited ? edited->id : QUuid()}) {
        if (id.isNull())
            continue;
        if (const int row = loaded([&](const ProductListRow& r) { return r.id == id; }); row >= 0)
            Q_EMIT dataChanged(index(row), index(row));
    }
}

QVariant ProductListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ProductListRow& saved = rows()[index.row()];
    const ProductListRow& row = m_edited && m_edited->id == saved.id ? *m_edited : saved;
    using Delegate = ProductListDelegate;
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case Delegate::idRole:
        return row.id;
    case Delegate::skuRole:
        return row.sku;
    case Delegate::categoryRole:
        return row.category;
    case Delegate::priceRole:
        return row.price;
    case Delegate::stockRole:
        return row.stockText;
    case Delegate::badgeRole:
        return row.typeBadge;
    case Delegate::inactiveRole:
        return row.isInactive;
    case Qt::AccessibleTextRole: {
        QStringList spoken{row.name, row.typeBadge, row.price, row.stockText};
        if (row.isInactive)
            spoken.append(QStringLiteral("Inactive"));
        return spoken.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole: {
        // The bottom line is cut short in a narrow list: the whole of it on hover.
        QStringList whole{row.name};
        for (const QString& part : {row.sku, row.category, row.stockText}) {
            if (!part.isEmpty())
                whole.append(part);
        }
        return whole.join(QStringLiteral(" · "));
    }
    default:
        return {};
    }
}
