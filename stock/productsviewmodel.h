#pragma once

#include "records/category.h"
#include "records/inventorymovement.h"
#include "records/product.h"
#include "records/supplier.h"
#include "records/taxgroup.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>
#include <QUuid>

#include <optional>

// One line of the products list, in finished text.
struct ProductListRow {
    Ref<Product> product;
    QString name;
    QString sku;
    QString category; // empty without one
    QString price;
    bool isInactive = false;
    QString stockText;
    QString typeBadge;
};

// The product as it was when the form opened on it, to tell a hand-made cost edit.
struct CostOpening {
    QUuid id;
    double cost = 0;
};

struct CostHistoryRow {
    QString date;
    QString what;   // "Delivery 5 at ₵3.00" or "Edited"
    QString change; // "₵2.00 → ₵2.33"
};

// What a sheet made, or why it made nothing.
template <class T> struct Creation {
    Ref<T> record;
    std::optional<QString> errorMessage;
};

// The Products screen: the filters and the list, new drafts, the selection with its cost tracking,
// the form's texts that depend on the product, saving and deleting. A store that can't be read
// gives empty answers and says so in errorMessage.
class ProductsViewModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr int costHistoryLimit = 5;

    static QString searchPrompt() { return QStringLiteral("Search products"); }
    static QString allCategoriesTitle() { return QStringLiteral("All Categories"); }
    static QString typeTitle() { return QStringLiteral("Type"); }
    static QString allTypesTitle() { return QStringLiteral("All Types"); }
    static QString typeFilterTitle(ProductType type);
    static QString typeFilterHelp() { return QStringLiteral("Show one type of product"); }
    static QString lowStockTitle() { return QStringLiteral("Low Stock"); }
    static QString inactiveTitle() { return QStringLiteral("Inactive"); }
    static QString newProductTitle() { return QStringLiteral("New Product"); }
    static QString newProductMenuHelp()
    {
        return QStringLiteral("New Inventory Item, Non-Inventory Item, or Service");
    }
    static QString newProductHelp(ProductType type);
    static QString emptyTitle() { return QStringLiteral("No products"); }
    static QString emptyMessage() { return QStringLiteral("Add a product or clear your filters."); }
    static QString noSelectionTitle() { return QStringLiteral("Select a product"); }
    static QString noSelectionMessage()
    {
        return QStringLiteral("Choose a product from the list, or add a new one.");
    }
    static QString draftName(ProductType type);
    static QString deleteTitle() { return QStringLiteral("Delete this product?"); }
    static QString deleteMessage()
    {
        return QStringLiteral("This cannot be undone. Past sales keep their own snapshot of this product's "
                              "name and price.");
    }
    static QString costEditReason() { return QStringLiteral("Edited in Products"); }

    ProductsViewModel(ModelContext& context, SessionStore& session, QObject* parent = nullptr);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    std::optional<QUuid> selectedCategoryID() const { return m_selectedCategoryID; }
    void setSelectedCategoryID(const std::optional<QUuid>& id);
    bool showOnlyLowStock() const { return m_showOnlyLowStock; }
    void setShowOnlyLowStock(bool on);
    bool showOnlyInactive() const { return m_showOnlyInactive; }
    void setShowOnlyInactive(bool on);
    std::optional<ProductType> typeFilter() const { return m_typeFilter; }
    void setTypeFilter(const std::optional<ProductType>& type);

    // Every filter at once: low stock, inactive, type, category, then the search in name and SKU
    // (case-insensitive) or barcode (as stored). Order kept.
    QList<Ref<Product>> filtered(const QList<Ref<Product>>& products) const;
    // The list of the screen by name: the filters other than the search run in SQL.
    QList<Ref<Product>> products();
    ProductListRow row(const Ref<Product>& product) const;

    QList<Ref<Category>> categories();
    QList<Ref<Supplier>> suppliers();
    QList<Ref<TaxGroup>> taxGroups();

    // Inserts a product of `type`, or of the settings' default type, with the store's default tax.
    // Doesn't save.
    static Ref<Product> createDraft(ModelContext& context, const Ref<Category>& category,
                                    const Ref<AppSettings>& settings, std::optional<ProductType> type);
    ProductType defaultType() const;
    // "New Product": a draft in the chosen category, saved and selected. Filters that would hide it
    // are cleared, so it shows in the list. Null when the save fails.
    Ref<Product> newProduct(std::optional<ProductType> type);

    Ref<Product> selectedProduct() const { return m_selectedProduct; }
    std::optional<CostOpening> costWhenOpened() const { return m_costWhenOpened; }
    // Books the former product's hand-made cost change, then opens the new one.
    void select(const Ref<Product>& product);
    // The form goes away (the screen is left) or comes back (the cost is taken anew, so that a
    // delivery booked meanwhile doesn't count as an edit).
    void closeForm();
    void reopenForm();
    // Writes a "costChange" row when the cost moved by more than the tolerance since `opening`.
    // True when it wrote one.
    bool trackCostEdits(const std::optional<CostOpening>& opening);

    // "Save" on the form, with the name and codes trimmed: absent on success, else the failure,
    // and the edits stay pending.
    std::optional<QString> save(const Ref<Product>& product);
    // Clears the selection; past sales and movements lose the link, not their rows.
    bool deleteProduct(const Ref<Product>& product);

    // The product's rows that moved its cost, newest first, at most `limit`.
    QList<Ref<InventoryMovement>> costHistory(const Ref<Product>& product, int limit = costHistoryLimit);
    qint64 costHistoryCount(const Ref<Product>& product);
    QList<CostHistoryRow> costHistoryRows(const Ref<Product>& product);
    static std::optional<QString> costHistoryMoreText(qint64 total);
    static QString costHistoryEmptyText(const Product& product);

    static QString costPriceTitle(SellingUnit unit);
    static QString sellingPriceTitle(SellingUnit unit);
    static QString fractionNote() { return SellingUnits::fractionHint(); }
    QString marginText(const Product& product) const;
    // What the chosen taxes add up to: "NHIL (2.5%) + GETFund Levy (2.5%) + VAT (15%) = 20%";
    // empty where the group's name already says it all.
    static QString taxSummary(const Product& product);
    static QString stockOnHandText(const Product& product);
    // For a product that no longer tracks stock but still holds some.
    static std::optional<QString> uncountedStockNote(const Product& product);

    // The form's "Taxable" switch: switched on without taxes, the product takes the default group.
    void setTaxable(const Ref<Product>& product, bool isTaxable);
    void setTaxGroup(const Ref<Product>& product, const Ref<TaxGroup>& group);

    // Money typed on the form: en_US digits, "," grouping allowed; absent unless 0 or more.
    static std::optional<double> amountFromText(const QString& text);
    // Two decimals, more only when the amount has them (a cost kept to 4 places).
    static QString amountText(double amount);
    // A reorder level: "," reads as ".", 0 or more, to thousandths.
    static std::optional<double> quantityFromText(const QString& text);
    // The commission is typed as a percentage; blank means the staff member's own rate.
    struct CommissionEntry {
        bool isValid = false;
        std::optional<double> rate;
    };
    static CommissionEntry commissionFromText(const QString& text);
    static QString commissionText(std::optional<double> rate);
    static QString commissionError()
    {
        return QStringLiteral("Enter a percentage from 0 to 100, or leave it blank.");
    }

    Creation<Category> createCategory(const QString& name, const QString& colorHex);
    Creation<Supplier> createSupplier(const QString& name);

    QString currencySymbol() const;

Q_SIGNALS:
    void filtersChanged();
    void selectionChanged();
    // A save or rollback touched what the list or the form shows.
    void productsChanged();

private:
    template <class T> Creation<T> create(const Ref<T>& record);
    QString money(double amount) const;

    ModelContext& m_context;
    SessionStore& m_session;
    QString m_searchText;
    std::optional<QUuid> m_selectedCategoryID;
    bool m_showOnlyLowStock = false;
    bool m_showOnlyInactive = false;
    std::optional<ProductType> m_typeFilter;
    Ref<Product> m_selectedProduct;
    std::optional<CostOpening> m_costWhenOpened;
    QList<Ref<Category>> m_liveCategories;
};
