#include "stock/inventoryviewmodel.h"

#include "money/currency.h"
#include "stock/stockconditions.h"
#include "store/storeerror.h"

InventoryViewModel::InventoryViewModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    connect(&m_context, &ModelContext::didChange, this, [this](const QSet<QString>& entityNames) {
        if (entityNames.contains(Product::schema().name) ||
            entityNames.contains(InventoryMovement::schema().name))
            Q_EMIT inventoryChanged();
    });
}

void InventoryViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text))
        Q_EMIT searchTextChanged();
}

QList<Ref<Product>> InventoryViewModel::filteredProducts(const QList<Ref<Product>>& products) const
{
    const QString needle = m_searchText.toLower();
    QList<Ref<Product>> result;
    for (const Ref<Product>& product : products) {
        if (!product->tracksStock())
            continue;
        if (!needle.isEmpty() && !product->name().toLower().contains(needle) &&
            !product->sku().toLower().contains(needle))
            continue;
        result.append(product);
    }
    return result;
}

QList<Ref<Product>> InventoryViewModel::products()
{
    return reading(QList<Ref<Product>>(), [this] {
        // The type is filtered in SQL; the search runs in memory, where lower-casing is Unicode's.
        const FetchDescriptor tracked = FetchDescriptor(StockConditions::tracksStock())
                                            .sortedBy(ascending(Product::Col::name));
        return filteredProducts(m_context.fetch<Product>(tracked));
    });
}

QList<Ref<InventoryMovement>> InventoryViewModel::movements(const Ref<Product>& product,
                                                            const Ref<InventoryMovement>& after)
{
    Q_ASSERT(product);
    Q_ASSERT(!after || after->product() == product);
    return reading(QList<Ref<InventoryMovement>>(), [&] {
        // Rows of one instant come newest insert first, so rowid breaks the tie. The key is read
        // back from the row itself: a timestamp that went through QDateTime may have lost the
        // digits that place it among its neighbours.
        Condition filter = InventoryMovement::Col::product == product;
        if (after)
            filter = filter && Condition(QStringLiteral("(\"timestamp\", rowid) < (SELECT \"timestamp\", rowid "
                                                        "FROM \"InventoryMovement\" WHERE \"id\" = ?)"),
                                         {after->idText()});
        return m_context.fetch<InventoryMovement>(FetchDescriptor(filter)
                                                      .sortedBy(descending(InventoryMovement::Col::timestamp))
                                                      .sortedBy(descending(Column{"rowid"}))
                                                      .limitedTo(movementPageSize));
    });
}

double InventoryViewModel::stockValue()
{
    return reading(0.0, [this] {
        const Condition tracked = StockConditions::tracksStock();
        return m_context
            .scalar(QStringLiteral("SELECT TOTAL(\"costPrice\" * \"stockQuantity\") FROM \"Product\" WHERE ") +
                        tracked.sql(),
                    tracked.bindings())
            .toDouble();
    });
}

QString InventoryViewModel::stockValueText(const QString& currencySymbol)
{
    return Currency::format(stockValue(), currencySymbol);
}

qint64 InventoryViewModel::lowStockCount()
{
    return reading(qint64(0), [this] {
        return m_context.count<Product>(StockConditions::lowStock());
    });
}
