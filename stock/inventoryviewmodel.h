#pragma once

#include "records/inventorymovement.h"
#include "records/product.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// The Inventory screen's state: the search over stock-tracked products, the summary figures, and
// a product's movement history a page at a time. A store that can't be read gives empty answers
// and says so in errorMessage.
class InventoryViewModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr int movementPageSize = 50;

    explicit InventoryViewModel(ModelContext& context, QObject* parent = nullptr);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);

    // Products whose type tracks stock, then, with a search, those whose name or SKU contains it
    // (case-insensitive). Order kept.
    QList<Ref<Product>> filteredProducts(const QList<Ref<Product>>& products) const;
    // The list of the screen: every stock-tracked product by name, through filteredProducts.
    QList<Ref<Product>> products();
    // Newest first, a page at a time: the rows after `after`, the last one already shown, or the
    // newest page without it. Fewer than a page means the end. Paged by key, not by position, so
    // that a movement booked meanwhile neither repeats a row nor hides one.
    QList<Ref<InventoryMovement>> movements(const Ref<Product>& product,
                                            const Ref<InventoryMovement>& after = nullptr);

    // Sum of Product.stockValue over the products that track stock, unrounded.
    double stockValue();
    QString stockValueText(const QString& currencySymbol);
    // Products at or below their reorder level.
    qint64 lowStockCount();

Q_SIGNALS:
    void searchTextChanged();
    // A save or rollback touched products or movements: lists and figures are out of date.
    void inventoryChanged();

private:
    ModelContext& m_context;
    QString m_searchText;
};
