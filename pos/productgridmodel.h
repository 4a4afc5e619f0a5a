#pragma once

#include "records/enums.h"
#include "records/product.h"
#include "store/modelcontext.h"

#include <QAbstractListModel>
#include <QHash>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <vector>

// What a tile of the product grid shows, read straight from the columns: no record is built until
// a product is sold.
struct ProductTile {
    QString id;
    QString name;
    QString sku;
    QString barcode;
    QString categoryID; // empty without a category
    double price = 0;
    double stock = 0;
    double reorderLevel = 0;
    SellingUnit unit = SellingUnit::each;
    ProductType type = ProductType::inventory;
    bool isActive = true;
    // Lower-cased once at the read, so a keystroke compares and never converts.
    QString nameKey;
    QString skuKey;

    bool isLowStock() const { return type == ProductType::inventory && stock <= reorderLevel; }
};

struct CategoryChip {
    QUuid id;
    QString name;
};

// The product grid of the workspace. A shop may carry tens of thousands of products, and every
// keystroke in the search field filters them again, so the light rows of all of them are held in
// memory (read once, and again after a save touches products or categories) and a scan finds
// its product through a table of codes rather than a walk.
class ProductGridModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        TileNameRole = Qt::UserRole + 1,
        PriceTextRole,
        CategoryNameRole,
        TypeTextRole,
        StockTextRole, // "{quantity} left", "Low stock: {quantity}", or empty when stock isn't counted
        LowStockRole,
        ProductIDRole,
    };

    using SymbolSource = std::function<QString()>;

    ProductGridModel(ModelContext& context, SymbolSource currencySymbol, QObject* parent = nullptr);

    // Reads every product's tile and the categories again. Throws StoreError, keeping the rows
    // that were there.
    void reload();
    // The stock of products whose records just changed, taken from the records: a sale moves a
    // few products' stock, which isn't worth reading every row again.
    void refreshStock(const QList<Ref<Product>>& products);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    std::optional<QUuid> categoryID() const { return m_categoryID; }
    // Absent is "All".
    void setCategoryID(const std::optional<QUuid>& id);
    // The chips after "All", in the owner's order.
    const QList<CategoryChip>& categories() const { return m_categories; }

    const ProductTile& tile(int row) const { return m_tiles[size_t(m_visible[size_t(row)])]; }
    // The live record behind a row of the grid; null when it has gone meanwhile.
    Ref<Product> product(int row);
    // The product whose barcode is exactly `code` or whose SKU is `code` in any case; where two
    // products answer, the one earlier in the grid's order. Inactive ones too, for the till to say
    // why they can't be sold. Null when none has it.
    Ref<Product> productWithCode(const QString& code);
    qsizetype productCount() const { return qsizetype(m_tiles.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    QString stockText(const ProductTile& tile) const;

private:
    bool matches(const ProductTile& tile, const QString& key) const;
    void refilter(bool narrowing);
    std::optional<qsizetype> indexOfCode(const QString& code) const;

    ModelContext& m_context;
    SymbolSource m_currencySymbol;
    std::vector<ProductTile> m_tiles; // every product, by name
    std::vector<int> m_visible;       // indexes into m_tiles of the rows shown
    QHash<QString, qsizetype> m_byID;
    QHash<QString, qsizetype> m_byBarcode;
    QHash<QString, qsizetype> m_bySku; // lower-cased
    QHash<QString, QString> m_categoryNames;
    QList<CategoryChip> m_categories;
    QString m_searchText;
    QString m_searchKey;
    std::optional<QUuid> m_categoryID;
    QString m_categoryKey;
};
