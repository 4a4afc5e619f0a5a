#pragma once

#include "records/category.h"
#include "records/inventorymovement.h"
#include "records/product.h"
#include "records/supplier.h"
#include "records/taxgroup.h"
#include "startup/sessionstore.h"
#include "store/formdraft.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QMap>
#include <QString>
#include <QUuid>

#include <optional>

// One line of the products list, in finished text.
struct ProductListRow {
    QUuid id;
    QString name;
    QString sku;
    QString category; // empty without one
    QString price;
    bool isInactive = false;
    QString stockText;
    QString typeBadge;
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

// The Products screen: the filters and the list, and the form on the selected or a new product.
// The form edits a copy: other screens' saves never write a half-typed edit, nor does their
// rollback lose one. Save writes the edits, and the cost-history line of a cost typed by hand, in
// one unit of work. A store that can't be read gives empty answers and says so in errorMessage,
// which the next action clears.
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
    static constexpr int pageSize = 100;
    // The screen's list by name, a page at a time: the `limit` products after `after`, the last
    // row shown, or from the first without it; fewer than `limit` means the end. Every filter runs
    // in SQL, to the rule of `filtered`.
    QList<ProductListRow> page(const ProductListRow* after = nullptr, int limit = pageSize);
    ProductListRow row(const Ref<Product>& product) const;
    // The store's product of a row; null, with errorMessage, when it can't be read.
    Ref<Product> product(const QUuid& id);

    QList<Ref<Category>> categories();
    QList<Ref<Supplier>> suppliers();
    QList<Ref<TaxGroup>> taxGroups();

    // A product of `type`, or of the settings' default type, with the store's defaults; not yet in
    // the store.
    static Ref<Product> createDraft(ModelContext& context, const Ref<Category>& category,
                                    const Ref<AppSettings>& settings, std::optional<ProductType> type);
    ProductType defaultType() const;

    // The store's record on the form; null while none is open or it is a new product.
    Ref<Product> selectedProduct() const { return m_form.live(); }
    // What the form shows and edits; null while no form is open.
    Ref<Product> editedProduct() const { return m_form.edits(); }
    bool isNewProduct() const { return m_form.isNew(); }
    // Edits Save would write, or typed text it would refuse. A new product nobody typed into has
    // nothing to lose.
    bool hasUnsavedEdits() const;
    // Opens the form on `product` (or closes it): edits not saved are dropped, so ask first.
    void select(const Ref<Product>& product);
    // "New Product": a draft in the chosen category on the form, reaching the store on Save. Null
    // when the store can't be read to set up its taxes.
    Ref<Product> newProduct(std::optional<ProductType> type);
    // Back to the record as saved; a new product's form closes.
    void discardEdits();

    // "Save": the name and codes trimmed, then the edits written with a cost-history line when
    // the cost moved by more than the tolerance. Absent on success, else why not, with the edits
    // kept on the form and nothing written.
    std::optional<QString> save();
    // "Delete Product": past sales and movements lose the link, not their rows. A new product is
    // only dropped. False, with errorMessage, when the store refused.
    bool deleteProduct();

    // The form's number fields: what is typed goes onto the product once it reads as a number;
    // otherwise the field shows why, and Save is refused until it is put right.
    enum class Entry { costPrice, sellingPrice, reorderLevel, commission };
    void enter(Entry entry, const QString& text);
    std::optional<QString> entryProblem(Entry entry) const;
    // The field's text for the product's value.
    static QString entryText(const Product& product, Entry entry);

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
    // The stock as the store holds it now: sales and deliveries move it while the form is open.
    double stockOnHand() const;
    static QString stockOnHandText(const Product& product, double stock);
    // For a product that no longer tracks stock but still holds some.
    static std::optional<QString> uncountedStockNote(const Product& product, double stock);

    // The form's "Taxable" switch: switched on without taxes, the product takes the default group.
    void setTaxable(bool isTaxable);
    void setTaxGroup(const Ref<TaxGroup>& group);

    // Two decimals, more only when the amount has them (a cost kept to 4 places).
    static QString amountText(double amount);
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
    static QString negativeAmountError() { return QStringLiteral("Enter an amount of 0 or more."); }
    static QString negativeQuantityError() { return QStringLiteral("Enter a quantity of 0 or more."); }

    Creation<Category> createCategory(const QString& name, const QString& colorHex);
    Creation<Supplier> createSupplier(const QString& name);

    QString currencySymbol() const;

Q_SIGNALS:
    void filtersChanged();
    // Another product, a new one or none is on the form.
    void selectionChanged();
    // A save or rollback touched what the list or the form shows.
    void productsChanged();

private:
    template <class T> Creation<T> create(const Ref<T>& record);
    // A read the screen can't do without: the fallback when the store can't be read, with the
    // reason in errorMessage until the person's next action (a later read in the same action
    // mustn't wipe it).
    template <class Result, class Read> Result readOrTell(Result fallback, Read read)
    {
        try {
            return read();
        } catch (const Refusal& refusal) {
            setErrorMessage(refusal.description());
            return fallback;
        }
    }
    QString money(double amount) const;
    ProductListRow row(const QUuid& id, const QString& name, const QString& sku, const QString& category,
                       double price, bool isActive, double stock, SellingUnit unit, ProductType type) const;
    // Another product, a new one or none just came onto the form, with nothing typed yet.
    void showForm();
    void bookCostChange(const Ref<Product>& product, double costBefore);
    void showSavedProduct(const Ref<Product>& product);

    ModelContext& m_context;
    SessionStore& m_session;
    QString m_searchText;
    std::optional<QUuid> m_selectedCategoryID;
    bool m_showOnlyLowStock = false;
    bool m_showOnlyInactive = false;
    std::optional<ProductType> m_typeFilter;
    FormDraft<Product> m_form;
    QMap<Entry, QString> m_entryProblems;
};
