#include "pos/productgridmodel.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "records/category.h"

ProductGridModel::ProductGridModel(ModelContext& context, SymbolSource currencySymbol, QObject* parent)
    : QAbstractListModel(parent)
    , m_context(context)
    , m_currencySymbol(std::move(currencySymbol))
{
}

void ProductGridModel::reload()
{
    std::vector<ProductTile> tiles;
    tiles.reserve(m_tiles.size());
    // Units and types repeat on every row: kept as the few texts there are instead of one each.
    m_context.forEachRow(
        QStringLiteral("SELECT \"id\", \"name\", \"sku\", \"barcode\", \"category\", \"sellingPrice\", "
                       "\"stockQuantity\", \"reorderLevel\", \"sellingUnitRaw\", \"productTypeRaw\", \"isActive\" "
                       "FROM \"Product\" ORDER BY \"name\", \"id\""),
        {}, [&](const SqliteStatement& row) {
            ProductTile tile;
            tile.id = row.text(0);
            tile.name = row.text(1);
            tile.sku = row.text(2);
            tile.barcode = row.text(3);
            tile.categoryID = row.text(4);
            tile.price = row.real(5);
            tile.stock = row.real(6);
            tile.reorderLevel = row.real(7);
            tile.unit = SellingUnits::fromRaw(QString::fromUtf8(row.utf8(8)));
            tile.type = ProductTypes::fromRaw(QString::fromUtf8(row.utf8(9)));
            tile.isActive = row.integer(10) != 0;
            tile.nameKey = tile.name.toLower();
            tile.skuKey = tile.sku.toLower();
            tiles.push_back(std::move(tile));
        });
    QList<CategoryChip> categories;
    QHash<QString, QString> names;
    m_context.forEachRow(
        QStringLiteral("SELECT \"id\", \"name\" FROM \"Category\" ORDER BY \"sortOrder\", \"name\", \"id\""), {},
        [&](const SqliteStatement& row) {
            categories.append({QUuid::fromString(row.text(0)), row.text(1)});
            names.insert(row.text(0), row.text(1));
        });

    beginResetModel();
    m_tiles = std::move(tiles);
    m_categories = std::move(categories);
    m_categoryNames = std::move(names);
    m_byID.clear();
    m_byBarcode.clear();
    m_bySku.clear();
    m_byID.reserve(qsizetype(m_tiles.size()));
    m_byBarcode.reserve(qsizetype(m_tiles.size()));
    m_bySku.reserve(qsizetype(m_tiles.size()));
    for (qsizetype i = 0; i < qsizetype(m_tiles.size()); ++i) {
        const ProductTile& tile = m_tiles[size_t(i)];
        m_byID.insert(tile.id, i);
        // The first in the grid's order keeps a code that several products share.
        if (!tile.barcode.isEmpty() && !m_byBarcode.contains(tile.barcode))
            m_byBarcode.insert(tile.barcode, i);
        if (!tile.skuKey.isEmpty() && !m_bySku.contains(tile.skuKey))
            m_bySku.insert(tile.skuKey, i);
    }
    refilter(false);
    endResetModel();
}

void ProductGridModel::refreshStock(const QList<Ref<Product>>& products)
{
    bool changed = false;
    for (const Ref<Product>& product : products) {
        const qsizetype index = m_byID.value(product->idText(), -1);
        if (index < 0)
            continue;
        ProductTile& tile = m_tiles[size_t(index)];
        changed = changed || tile.stock != product->stockQuantity();
        tile.stock = product->stockQuantity();
    }
    if (changed && rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {StockTextRole, LowStockRole});
}

void ProductGridModel::setSearchText(const QString& text)
{
    if (text == m_searchText)
        return;
    const QString key = text.toLower();
    // More letters can only narrow what the fewer letters found.
    const bool narrowing = key.contains(m_searchKey);
    m_searchText = text;
    m_searchKey = key;
    beginResetModel();
    refilter(narrowing);
    endResetModel();
}

void ProductGridModel::setCategoryID(const std::optional<QUuid>& id)
{
    if (id == m_categoryID)
        return;
    m_categoryID = id;
    m_categoryKey = id ? Record::uuidText(*id) : QString();
    beginResetModel();
    refilter(false);
    endResetModel();
}

bool ProductGridModel::matches(const ProductTile& tile, const QString& key) const
{
    if (!tile.isActive)
        return false;
    if (m_categoryID && tile.categoryID != m_categoryKey)
        return false;
    if (key.isEmpty())
        return true;
    // The barcode is compared as stored: digits have no case.
    return tile.nameKey.contains(key) || tile.skuKey.contains(key) || tile.barcode.contains(key);
}

void ProductGridModel::refilter(bool narrowing)
{
    std::vector<int> visible;
    if (narrowing) {
        visible.reserve(m_visible.size());
        for (int i : m_visible) {
            if (matches(m_tiles[size_t(i)], m_searchKey))
                visible.push_back(i);
        }
    } else {
        visible.reserve(m_tiles.size());
        for (int i = 0; i < int(m_tiles.size()); ++i) {
            if (matches(m_tiles[size_t(i)], m_searchKey))
                visible.push_back(i);
        }
    }
    m_visible = std::move(visible);
}

std::optional<qsizetype> ProductGridModel::indexOfCode(const QString& code) const
{
    const qsizetype byBarcode = m_byBarcode.value(code, -1);
    const qsizetype bySku = m_bySku.value(code.toLower(), -1);
    if (byBarcode < 0 && bySku < 0)
        return std::nullopt;
    if (byBarcode < 0 || bySku < 0)
        return std::max(byBarcode, bySku);
    return std::min(byBarcode, bySku);
}

Ref<Product> ProductGridModel::productWithCode(const QString& code)
{
    const std::optional<qsizetype> index = indexOfCode(code);
    if (!index)
        return nullptr;
    return std::static_pointer_cast<Product>(m_context.find(Product::schema(), m_tiles[size_t(*index)].id));
}

Ref<Product> ProductGridModel::product(int row)
{
    if (row < 0 || row >= rowCount())
        return nullptr;
    return std::static_pointer_cast<Product>(m_context.find(Product::schema(), tile(row).id));
}

int ProductGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_visible.size());
}

QString ProductGridModel::stockText(const ProductTile& tile) const
{
    if (tile.type != ProductType::inventory)
        return {};
    const QString quantity = Quantity::format(tile.stock, tile.unit);
    return tile.isLowStock() ? QStringLiteral("Low stock: %1").arg(quantity) : QStringLiteral("%1 left").arg(quantity);
}

QVariant ProductGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ProductTile& shown = tile(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TileNameRole:
        return shown.name;
    case PriceTextRole:
        return Currency::format(shown.price, m_currencySymbol ? m_currencySymbol() : Currency::fixedSign);
    case CategoryNameRole:
        return m_categoryNames.value(shown.categoryID);
    case TypeTextRole:
        return ProductTypes::label(shown.type);
    case StockTextRole:
        return stockText(shown);
    case LowStockRole:
        return shown.isLowStock();
    case ProductIDRole:
        return shown.id;
    default:
        return {};
    }
}

QHash<int, QByteArray> ProductGridModel::roleNames() const
{
    return {{TileNameRole, "name"},          {PriceTextRole, "price"}, {CategoryNameRole, "category"},
            {TypeTextRole, "type"},          {StockTextRole, "stock"}, {LowStockRole, "lowStock"},
            {ProductIDRole, "productID"}};
}
