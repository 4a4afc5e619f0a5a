#include "stock/productsviewmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "money/taxsetup.h"
#include "money/tolerances.h"
#include "stock/productcodeerror.h"
#include "stock/stockconditions.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

#include <QLocale>

#include <cmath>

namespace {
Condition ofType(ProductType type)
{
    if (type == ProductType::inventory)
        return StockConditions::tracksStock();
    return Product::Col::productTypeRaw == ProductTypes::raw(type);
}

// "Cost Price (per kg)"; a unit counted in whole items needs no "per".
QString perUnit(const QString& title, SellingUnit unit)
{
    if (unit == SellingUnit::each)
        return title;
    return QStringLiteral("%1 (per %2)").arg(title, SellingUnits::symbol(unit));
}
} // namespace

ProductsViewModel::ProductsViewModel(ModelContext& context, SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_session(session)
{
    m_context.onChange(this,
                       {&Product::schema(), &Category::schema(), &Supplier::schema(), &TaxGroup::schema(),
                        &InventoryMovement::schema()},
                       [this] {
                           // Deleted elsewhere: there is nothing left to save the edits onto.
                           if (const Ref<Product> live = m_form.live(); live && live->isDeleted())
                               select(nullptr);
                           Q_EMIT productsChanged();
                       });
}

QString ProductsViewModel::typeFilterTitle(ProductType type)
{
    switch (type) {
    case ProductType::inventory:
        return QStringLiteral("Inventory Items");
    case ProductType::nonInventory:
        return QStringLiteral("Non-Inventory Items");
    case ProductType::service:
        return QStringLiteral("Services");
    }
    Q_UNREACHABLE();
}

QString ProductsViewModel::newProductHelp(ProductType type)
{
    return QStringLiteral("New %1 — change the default in Settings > Products & Inventory")
        .arg(ProductTypes::label(type));
}

QString ProductsViewModel::draftName(ProductType type)
{
    switch (type) {
    case ProductType::inventory:
        return QStringLiteral("New Product");
    case ProductType::nonInventory:
        return QStringLiteral("New Non-Inventory Item");
    case ProductType::service:
        return QStringLiteral("New Service");
    }
    Q_UNREACHABLE();
}

void ProductsViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text)) {
        setErrorMessage(std::nullopt);
        Q_EMIT filtersChanged();
    }
}

void ProductsViewModel::setSelectedCategoryID(const std::optional<QUuid>& id)
{
    if (replace(m_selectedCategoryID, id)) {
        setErrorMessage(std::nullopt);
        Q_EMIT filtersChanged();
    }
}

void ProductsViewModel::setShowOnlyLowStock(bool on)
{
    if (replace(m_showOnlyLowStock, on)) {
        setErrorMessage(std::nullopt);
        Q_EMIT filtersChanged();
    }
}

void ProductsViewModel::setShowOnlyInactive(bool on)
{
    if (replace(m_showOnlyInactive, on)) {
        setErrorMessage(std::nullopt);
        Q_EMIT filtersChanged();
    }
}

void ProductsViewModel::setTypeFilter(const std::optional<ProductType>& type)
{
    if (replace(m_typeFilter, type)) {
        setErrorMessage(std::nullopt);
        Q_EMIT filtersChanged();
    }
}

QList<Ref<Product>> ProductsViewModel::filtered(const QList<Ref<Product>>& products) const
{
    const QString needle = m_searchText.toLower();
    QList<Ref<Product>> result;
    for (const Ref<Product>& product : products) {
        if (m_showOnlyLowStock && !product->isLowStock())
            continue;
        if (m_showOnlyInactive && product->isActive())
            continue;
        if (m_typeFilter && product->productType() != *m_typeFilter)
            continue;
        if (m_selectedCategoryID) {
            const Ref<Category> category = product->category();
            if (!category || category->id() != *m_selectedCategoryID)
                continue;
        }
        if (!needle.isEmpty() && !product->name().toLower().contains(needle) &&
            !product->sku().toLower().contains(needle) && !product->barcode().contains(needle))
            continue;
        result.append(product);
    }
    return result;
}

QList<ProductListRow> ProductsViewModel::page(const ProductListRow* after, int limit)
{
    return readOrTell(QList<ProductListRow>(), [&] {
        // Unqualified columns are the product's own: the category brings only its name along.
        Condition where;
        if (m_showOnlyLowStock)
            where = where && StockConditions::lowStock();
        if (m_showOnlyInactive)
            where = where && (Product::Col::isActive == false);
        if (m_typeFilter)
            where = where && ofType(*m_typeFilter);
        if (m_selectedCategoryID)
            where = where && (Product::Col::category == *m_selectedCategoryID);
        if (const QString needle = m_searchText.toLower(); !needle.isEmpty())
            where = where && Condition(QStringLiteral("(instr(lower_unicode(p.\"name\"), ?) > 0 OR "
                                                      "instr(lower_unicode(p.\"sku\"), ?) > 0 OR "
                                                      "instr(p.\"barcode\", ?) > 0)"),
                                       {needle, needle, needle});
        if (after)
            where = where && Condition(QStringLiteral("(p.\"name\", p.\"id\") > (?, ?)"),
                                       {after->name, Record::uuidText(after->id)});
        QVariantList bindings = where.bindings();
        bindings.append(limit);
        return m_context.rows<ProductListRow>(
            QStringLiteral("SELECT p.\"id\", p.\"name\", p.\"sku\", c.\"name\", p.\"sellingPrice\", "
                           "p.\"isActive\", p.\"stockQuantity\", p.\"sellingUnitRaw\", p.\"productTypeRaw\" "
                           "FROM \"Product\" p LEFT JOIN \"Category\" c ON c.\"id\" = p.\"category\" ") +
                (where.isEmpty() ? QString() : QStringLiteral("WHERE ") + where.sql()) +
                QStringLiteral(" ORDER BY p.\"name\", p.\"id\" LIMIT ?"),
            bindings, [this](const SqliteStatement& r) {
                return row(QUuid(r.text(0)), r.text(1), r.text(2), r.isNull(3) ? QString() : r.text(3),
                           r.real(4), r.integer(5) != 0, r.real(6), SellingUnits::fromRaw(r.text(7)),
                           ProductTypes::fromRaw(r.text(8)));
            });
    });
}

Ref<Product> ProductsViewModel::product(const QUuid& id)
{
    return readOrTell(Ref<Product>(), [&] { return m_context.find<Product>(id); });
}

QString ProductsViewModel::currencySymbol() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return settings ? settings->currencySymbol() : Currency::fixedSign;
}

QString ProductsViewModel::money(double amount) const
{
    return Currency::format(amount, currencySymbol());
}

ProductListRow ProductsViewModel::row(const Ref<Product>& product) const
{
    const Ref<Category> category = product->category();
    return row(product->id(), product->name(), product->sku(), category ? category->name() : QString(),
               product->sellingPrice(), product->isActive(), product->stockQuantity(), product->sellingUnit(),
               product->productType());
}

ProductListRow ProductsViewModel::row(const QUuid& id, const QString& name, const QString& sku,
                                      const QString& category, double price, bool isActive, double stock,
                                      SellingUnit unit, ProductType type) const
{
    ProductListRow row;
    row.id = id;
    row.name = name;
    row.sku = sku;
    row.category = category;
    row.price = money(price);
    row.isInactive = !isActive;
    // An unknown type counts stock, as Product::tracksStock says.
    row.stockText = type == ProductType::inventory
                        ? QStringLiteral("%1 in stock").arg(Quantity::format(stock, unit))
                        : QStringLiteral("Not stocked");
    row.typeBadge = ProductTypes::label(type);
    return row;
}

QList<Ref<Category>> ProductsViewModel::categories()
{
    return readOrTell(QList<Ref<Category>>(), [this] {
        return m_context.fetch<Category>(FetchDescriptor()
                                             .sortedBy(ascending(Category::Col::sortOrder))
                                             .sortedBy(ascending(Category::Col::name)));
    });
}

QList<Ref<Supplier>> ProductsViewModel::suppliers()
{
    return readOrTell(QList<Ref<Supplier>>(), [this] {
        return m_context.fetch<Supplier>(
            FetchDescriptor(Supplier::Col::isActive == true).sortedBy(ascending(Supplier::Col::name)));
    });
}

QList<Ref<TaxGroup>> ProductsViewModel::taxGroups()
{
    return readOrTell(QList<Ref<TaxGroup>>(), [this] {
        return m_context.fetch<TaxGroup>(FetchDescriptor()
                                             .sortedBy(ascending(TaxGroup::Col::sortOrder))
                                             .sortedBy(ascending(TaxGroup::Col::name)));
    });
}

Ref<Product> ProductsViewModel::createDraft(ModelContext& context, const Ref<Category>& category,
                                            const Ref<AppSettings>& settings, std::optional<ProductType> type)
{
    const auto defaults = settings ? settings : std::make_shared<AppSettings>();
    const ProductType chosen = type.value_or(ProductTypes::fromRaw(defaults->defaultProductTypeRaw()));
    const QDateTime now = Clock::now();
    auto product = std::make_shared<Product>();
    product->lookUpRelationsIn(&context);
    product->setProductType(chosen);
    product->setName(draftName(chosen));
    product->setTaxRate(defaults->defaultTaxRate());
    product->setReorderLevel(defaults->lowStockDefaultThreshold());
    product->setSellingUnit(SellingUnit::each);
    product->setCreatedAt(now);
    product->setUpdatedAt(now);
    product->setCategory(category);
    // A store without taxes yet gets its standard ones first, in a unit of their own.
    TaxSetup::applyDefault(product, context, settings);
    return product;
}

ProductType ProductsViewModel::defaultType() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return ProductTypes::fromRaw(settings ? settings->defaultProductTypeRaw()
                                          : ProductTypes::raw(ProductType::inventory));
}

bool ProductsViewModel::hasUnsavedEdits() const
{
    return m_form.hasEdits() || !m_entryProblems.isEmpty();
}

void ProductsViewModel::select(const Ref<Product>& product)
{
    if (m_form.openOn(product))
        showForm();
}

Ref<Product> ProductsViewModel::newProduct(std::optional<ProductType> type)
{
    try {
        const Ref<Category> category =
            m_selectedCategoryID ? m_context.find<Category>(*m_selectedCategoryID) : nullptr;
        m_form = FormDraft<Product>::ofNew(createDraft(m_context, category, m_session.settings(), type),
                                           m_context);
    } catch (const Refusal& refusal) {
        setErrorMessage(refusal.description());
        return nullptr;
    }
    showForm();
    return m_form.edits();
}

void ProductsViewModel::discardEdits()
{
    m_form.discard();
    showForm();
}

void ProductsViewModel::showForm()
{
    setErrorMessage(std::nullopt);
    m_entryProblems.clear();
    Q_EMIT selectionChanged();
}

std::optional<QString> ProductsViewModel::save()
{
    Q_ASSERT(m_form.isOpen());
    for (Entry entry : {Entry::costPrice, Entry::sellingPrice, Entry::reorderLevel, Entry::commission}) {
        if (const std::optional<QString> problem = entryProblem(entry))
            return problem;
    }
    const Ref<Product> edits = m_form.edits();
    // A stray blank would hide the product from a scan or a search.
    edits->setName(edits->name().trimmed());
    edits->setSku(edits->sku().trimmed());
    edits->setBarcode(edits->barcode().trimmed());
    const bool isNew = m_form.isNew();
    Ref<Product> saved;
    try {
        saved = performUnitOfWork(m_context, [&] {
            ProductCodeError::checkUnique(m_context, *edits);
            const QDateTime now = Clock::now();
            const double costBefore = isNew ? 0 : m_form.live()->costPrice();
            const Ref<Product> live = m_form.writeTo(m_context);
            live->setUpdatedAt(now);
            if (isNew)
                live->setCreatedAt(now);
            // A new product's first cost is where its history starts, not a change.
            else if (std::abs(live->costPrice() - costBefore) > Tolerance::costChange)
                bookCostChange(live, costBefore);
            return live;
        });
    } catch (const Refusal& refusal) {
        return refusal.description();
    }
    m_form.reopen(saved);
    setErrorMessage(std::nullopt);
    if (isNew) {
        showSavedProduct(saved);
        // The list was told of the save before the form knew the product as saved.
        Q_EMIT productsChanged();
    }
    return std::nullopt;
}

void ProductsViewModel::bookCostChange(const Ref<Product>& product, double costBefore)
{
    auto movement = std::make_shared<InventoryMovement>();
    movement->setProduct(product);
    movement->setType(InventoryMovementType::costChange);
    movement->setQuantityChange(0);
    movement->setStockAfter(product->stockQuantity());
    movement->setReason(costEditReason());
    movement->setCostBefore(costBefore);
    movement->setCostAfter(product->costPrice());
    movement->setTimestamp(Clock::now());
    movement->setPerformedBy(m_session.currentUser());
    m_context.insert(movement);
}

// A product just saved shows in the list: filters that would hide it are cleared.
void ProductsViewModel::showSavedProduct(const Ref<Product>& product)
{
    if (!filtered({product}).isEmpty())
        return;
    m_searchText.clear();
    m_typeFilter.reset();
    m_showOnlyLowStock = false;
    m_showOnlyInactive = false;
    if (m_selectedCategoryID && (!product->category() || product->category()->id() != *m_selectedCategoryID))
        m_selectedCategoryID.reset();
    Q_EMIT filtersChanged();
}

bool ProductsViewModel::deleteProduct()
{
    Q_ASSERT(m_form.isOpen());
    const Ref<Product> live = m_form.live();
    if (live && !saveOrUndo(m_context, [&] { m_context.remove(live); }))
        return false;
    setErrorMessage(std::nullopt); // a new one is just dropped
    select(nullptr);
    return true;
}

void ProductsViewModel::enter(Entry entry, const QString& text)
{
    const Ref<Product> product = m_form.edits();
    Q_ASSERT(product);
    std::optional<QString> problem;
    const auto take = [&](const NumberEntry& typed, const QString& negative, auto set) {
        if (!typed.isValid())
            problem = typed.problem;
        else if (*typed.value < 0)
            problem = negative;
        else
            set(*typed.value);
    };
    switch (entry) {
    case Entry::costPrice:
        take(NumberEntry::money(text, NumberEntry::unitCostPlaces), negativeAmountError(),
             [&](double cost) { product->setCostPrice(cost); });
        break;
    case Entry::sellingPrice:
        take(NumberEntry::money(text), negativeAmountError(),
             [&](double price) { product->setSellingPrice(price); });
        break;
    case Entry::reorderLevel:
        take(NumberEntry::quantity(text), negativeQuantityError(),
             [&](double level) { product->setReorderLevel(level); });
        break;
    case Entry::commission: {
        const CommissionEntry typed = commissionFromText(text);
        if (typed.isValid)
            product->setCommissionRate(typed.rate);
        else
            problem = commissionError();
        break;
    }
    }
    if (problem)
        m_entryProblems.insert(entry, *problem);
    else
        m_entryProblems.remove(entry);
}

std::optional<QString> ProductsViewModel::entryProblem(Entry entry) const
{
    const auto found = m_entryProblems.constFind(entry);
    return found == m_entryProblems.constEnd() ? std::nullopt : std::optional(*found);
}

QString ProductsViewModel::entryText(const Product& product, Entry entry)
{
    switch (entry) {
    case Entry::costPrice:
        return amountText(product.costPrice());
    case Entry::sellingPrice:
        return amountText(product.sellingPrice());
    case Entry::reorderLevel:
        return Quantity::format(product.reorderLevel());
    case Entry::commission:
        return commissionText(product.commissionRate());
    }
    Q_UNREACHABLE();
}

QList<Ref<InventoryMovement>> ProductsViewModel::costHistory(const Ref<Product>& product, int limit)
{
    Q_ASSERT(product);
    return readOrTell(QList<Ref<InventoryMovement>>(), [&] {
        // Rows of one instant come newest insert first.
        return m_context.fetch<InventoryMovement>(
            FetchDescriptor(InventoryMovement::Col::product == product &&
                            InventoryMovement::Col::costAfter.isNotNull())
                .sortedBy(descending(InventoryMovement::Col::timestamp))
                .sortedBy(descending(Column{"rowid"}))
                .limitedTo(limit));
    });
}

qint64 ProductsViewModel::costHistoryCount(const Ref<Product>& product)
{
    Q_ASSERT(product);
    return readOrTell(qint64(0), [&] {
        return m_context.count<InventoryMovement>(InventoryMovement::Col::product == product &&
                                                  InventoryMovement::Col::costAfter.isNotNull());
    });
}

QList<CostHistoryRow> ProductsViewModel::costHistoryRows(const Ref<Product>& product)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    QList<CostHistoryRow> rows;
    for (const Ref<InventoryMovement>& movement : costHistory(product)) {
        CostHistoryRow row;
        row.date = english.toString(movement->timestamp().toLocalTime(), QStringLiteral("MMM d, yyyy"));
        if (movement->type() == InventoryMovementType::costChange)
            row.what = QStringLiteral("Edited");
        else
            row.what = QStringLiteral("Delivery %1 at %2")
                           .arg(Quantity::format(movement->quantityChange(), product->sellingUnit()),
                                money(movement->unitCost().value_or(*movement->costAfter())));
        row.change =
            money(movement->costBefore().value_or(0)) + QStringLiteral(" → ") + money(*movement->costAfter());
        rows.append(row);
    }
    return rows;
}

std::optional<QString> ProductsViewModel::costHistoryMoreText(qint64 total)
{
    if (total <= costHistoryLimit)
        return std::nullopt;
    return QStringLiteral("Latest %1 of %2. Reports → Cost Changes shows them all.")
        .arg(costHistoryLimit)
        .arg(total);
}

QString ProductsViewModel::costHistoryEmptyText(const Product& product)
{
    if (product.productType() == ProductType::inventory)
        return QStringLiteral("No cost changes yet. Stock In with the delivery's unit cost updates the cost "
                              "price to the weighted average.");
    return QStringLiteral("No cost changes yet. Edits to Cost Price are recorded here.");
}

QString ProductsViewModel::costPriceTitle(SellingUnit unit)
{
    return perUnit(QStringLiteral("Cost Price"), unit);
}

QString ProductsViewModel::sellingPriceTitle(SellingUnit unit)
{
    return perUnit(QStringLiteral("Selling Price"), unit);
}

QString ProductsViewModel::marginText(const Product& product) const
{
    return money(product.marginPerUnit());
}

QString ProductsViewModel::taxSummary(const Product& product)
{
    const std::vector<TaxComponent> components = product.taxComponents();
    QStringList labels;
    for (const TaxComponent& component : components)
        labels.append(component.label);
    // One tax of a group says no more than the group's name.
    if (labels.size() == 1 && product.taxGroup())
        return {};
    if (labels.size() < 2)
        return labels.join(QString());
    return labels.join(QStringLiteral(" + ")) + QStringLiteral(" = ") +
           Currency::percentText(product.taxRate());
}

double ProductsViewModel::stockOnHand() const
{
    if (const Ref<Product> live = m_form.live())
        return live->stockQuantity();
    return m_form.isOpen() ? m_form.edits()->stockQuantity() : 0;
}

QString ProductsViewModel::stockOnHandText(const Product& product, double stock)
{
    return Quantity::format(stock, product.sellingUnit());
}

std::optional<QString> ProductsViewModel::uncountedStockNote(const Product& product, double stock)
{
    if (product.tracksStock() || stock == 0)
        return std::nullopt;
    return QStringLiteral("%1 recorded while this was an Inventory Item aren't counted now. Switch back to "
                          "Inventory Item to track them again.")
        .arg(stockOnHandText(product, stock));
}

void ProductsViewModel::setTaxable(bool isTaxable)
{
    const Ref<Product> product = m_form.edits();
    Q_ASSERT(product);
    product->setIsTaxable(isTaxable);
    readOrTell(0, [&] {
        if (isTaxable && !product->taxGroup())
            product->setTaxGroup(TaxSetup::defaultGroup(m_context, m_session.settings()));
        TaxSetup::sync(*product);
        return 0;
    });
}

void ProductsViewModel::setTaxGroup(const Ref<TaxGroup>& group)
{
    const Ref<Product> product = m_form.edits();
    Q_ASSERT(product);
    product->setTaxGroup(group);
    // The group's taxes are read to sum its rate.
    readOrTell(0, [&] {
        TaxSetup::sync(*product);
        return 0;
    });
}

QString ProductsViewModel::amountText(double amount)
{
    QString text = QString::number(Rounding::toPlaces(amount, 4), 'f', 4);
    while (text.endsWith(QLatin1Char('0')) && text.indexOf(QLatin1Char('.')) < text.size() - 3)
        text.chop(1);
    return text;
}

ProductsViewModel::CommissionEntry ProductsViewModel::commissionFromText(const QString& text)
{
    QString typed = text.trimmed();
    if (typed.endsWith(QLatin1Char('%')))
        typed.chop(1);
    if (typed.trimmed().isEmpty())
        return {true, std::nullopt};
    bool ok = false;
    const double percent = typed.trimmed().replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
    if (!ok || !(percent >= 0 && percent <= 100))
        return {false, std::nullopt};
    return {true, percent / 100};
}

QString ProductsViewModel::commissionText(std::optional<double> rate)
{
    if (!rate)
        return {};
    QString text = Currency::percentText(*rate);
    text.chop(1); // the field shows its own "%"
    return text;
}

// A failed create leaves nothing behind, so a retry makes one record, not two.
template <class T> Creation<T> ProductsViewModel::create(const Ref<T>& record)
{
    try {
        performUnitOfWork(m_context, [&] { m_context.insert(record); });
        return {record, std::nullopt};
    } catch (const Refusal& refusal) {
        return {nullptr, refusal.description()};
    }
}

Creation<Category> ProductsViewModel::createCategory(const QString& name, const QString& colorHex)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return {nullptr, QStringLiteral("Enter a category name.")};
    auto category = std::make_shared<Category>();
    category->setName(trimmed);
    category->setColorHex(colorHex);
    return create(category);
}

Creation<Supplier> ProductsViewModel::createSupplier(const QString& name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return {nullptr, QStringLiteral("Enter a supplier name.")};
    auto supplier = std::make_shared<Supplier>();
    supplier->setName(trimmed);
    supplier->setCreatedAt(Clock::now());
    return create(supplier);
}
