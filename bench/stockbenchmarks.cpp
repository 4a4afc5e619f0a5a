// Benchmarks of the stock screens and the till's per-keystroke work: pricing a big cart, finding
// a scanned code among many products, and the first page of a long movement history.

#include "benchstores.h"

#include "records/posschema.h"
#include "records/records.h"
#include "selling/cart.h"
#include "startup/sessionstore.h"
#include "stock/inventoryviewmodel.h"
#include "stock/productsviewmodel.h"
#include "store/modelcontainer.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <cstdio>
#include <optional>
#include <random>

namespace {

// The text ModelContext::fetch sends for a descriptor, so that its plan can be checked.
QString fetchSql(const Entity& entity, const FetchDescriptor& descriptor)
{
    QString sql = QStringLiteral("SELECT %1 FROM \"%2\" WHERE %3 ORDER BY ")
                      .arg(entity.selectList, entity.name, descriptor.filter.sql());
    for (const SortDescriptor& sort : descriptor.sort)
        sql += sort.column.quoted() + (sort.ascending ? QStringLiteral(" ASC, ") : QStringLiteral(" DESC, "));
    return sql + QStringLiteral("rowid LIMIT %1 OFFSET %2").arg(descriptor.limit).arg(descriptor.offset);
}

// A basket as big as a wholesale customer's: mixed tax rates and units, some line discounts, a
// sale discount and points to spread over it all.
void BM_CartCalculation100Lines(benchmark::State& state)
{
    Cart cart;
    for (int i = 0; i < 100; ++i) {
        auto product = std::make_shared<Product>();
        product->setName(QStringLiteral("Item %1").arg(i));
        product->setSellingPrice(1.5 + (i * 37 % 200) * 0.85);
        product->setTaxRate(i % 5 == 0 ? 0.0 : 0.219);
        product->setSellingUnit(i % 9 == 0 ? SellingUnit::kg : SellingUnit::each);
        cart.addOrIncrement(product, i % 9 == 0 ? 1.25 : 1 + i % 4);
        if (i % 7 == 0)
            cart.setLineDiscount(cart.lines().last().id, 1.0);
    }
    cart.setSaleDiscount(5.0);
    cart.setValuePerPoint(0.05);
    cart.setPointsToRedeem(40);
    const bool inclusive = state.range(0) != 0;
    for (auto _ : state) {
        CartCalculation calculation = cart.calculation(inclusive);
        benchmark::DoNotOptimize(calculation);
    }
}
BENCHMARK(BM_CartCalculation100Lines)->ArgName("inclusive")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// 50,000 products with unique SKUs and barcodes, a few without a barcode, most in one of 20
// categories; made once per run.
class ManyProductsStore {
public:
    static constexpr int productCount = 50000;

    static ManyProductsStore& instance()
    {
        static ManyProductsStore store;
        return store;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("many-products.store")); }
    const QStringList& barcodes() const { return m_barcodes; }
    const QStringList& skus() const { return m_skus; }

private:
    ManyProductsStore()
    {
        std::mt19937_64 random(20261121);
        ModelContainer container(path(), POSSchema::description());
        ModelContext& context = container.mainContext();
        QList<Ref<Category>> categories;
        for (int i = 0; i < 20; ++i) {
            auto category = std::make_shared<Category>();
            category->setName(QStringLiteral("Category %1").arg(i));
            context.insert(category);
            categories << category;
        }
        for (int i = 0; i < productCount; ++i) {
            auto product = std::make_shared<Product>();
            if (i % 3 != 0)
                product->setCategory(categories[i % categories.size()]);
            const QString sku = QStringLiteral("SKU-%1").arg(i, 6, 10, QLatin1Char('0'));
            // Loose goods and services often carry no barcode.
            const QString barcode = i % 12 == 0 ? QString()
                                                : QStringLiteral("6%1").arg(random() % 1000000000000ULL, 12,
                                                                            10, QLatin1Char('0'));
            product->setSku(sku);
            product->setBarcode(barcode);
            product->setName(QStringLiteral("Product %1").arg(i));
            product->setSellingPrice(double(1 + i % 300));
            context.insert(product);
            m_skus << sku;
            if (!barcode.isEmpty())
                m_barcodes << barcode;
        }
        context.save();
        // Closing runs the planner's statistics, as the program does when it quits.
    }

    QTemporaryDir m_folder;
    QStringList m_barcodes;
    QStringList m_skus;
};

// What a scan or a typed code does at the till: one product by exact barcode or SKU.
void BM_FindProductByCode(benchmark::State& state)
{
    ManyProductsStore& store = ManyProductsStore::instance();
    ModelContainer container(store.path(), POSSchema::description());
    ModelContext& context = container.mainContext();
    const auto lookFor = [](const QString& code) {
        return FetchDescriptor(Product::Col::barcode == code || Product::Col::sku == code).limitedTo(1);
    };

    const QString plan = queryPlan(context, fetchSql(Product::schema(), lookFor(store.skus().first())),
                                   lookFor(store.skus().first()).filter.bindings());
    if (!plan.contains(QStringLiteral("MULTI-INDEX OR")) ||
        !plan.contains(QStringLiteral("Product_barcode")) || !plan.contains(QStringLiteral("Product_sku"))) {
        state.SkipWithError(qPrintable(QStringLiteral("not both indexes: ") + plan));
        return;
    }
    static const bool told = std::fprintf(stderr, "Code lookup plan: %s\n", qPrintable(plan)) > 0;
    (void)told;

    // By barcode, by SKU, or a code nobody has; spread over the table so each lookup reads new pages.
    const int kind = int(state.range(0));
    QStringList codes;
    std::mt19937 random(7);
    for (int i = 0; i < 4096; ++i) {
        const QStringList& pool = kind == 0 ? store.barcodes() : store.skus();
        codes << (kind == 2 ? QStringLiteral("4%1").arg(random()) : pool[int(random() % pool.size())]);
    }
    qsizetype next = 0;
    qint64 found = 0;
    for (auto _ : state) {
        const Ref<Product> product = context.fetchFirst<Product>(lookFor(codes[next++ % codes.size()]));
        found += product != nullptr;
    }
    if ((kind == 2) != (found == 0))
        state.SkipWithError("a lookup found the wrong thing");
}
BENCHMARK(BM_FindProductByCode)
    ->ArgName("barcode0_sku1_unknown2")
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

// The products of the five-year store with about 5,000 movements each, the busiest kind of item.
QStringList productsWithAbout5000Movements(ModelContext& context)
{
    SqliteStatement statement = context.connection().prepare(QStringLiteral(
        "SELECT product FROM InventoryMovement GROUP BY product HAVING COUNT(*) BETWEEN 4500 AND 5500 "
        "ORDER BY product LIMIT 16"));
    QStringList ids;
    while (statement.step())
        ids << statement.text(0);
    return ids;
}

// Opening a product on the Inventory screen: the newest page of its history. A page deep down
// the history shows that scrolling far costs about the same.
void BM_MovementHistoryPage(benchmark::State& state)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    InventoryViewModel inventory(context);
    const int depth = int(state.range(0)); // pages already scrolled through
    // Each product with the last row shown before the page to read.
    QList<std::pair<Ref<Product>, Ref<InventoryMovement>>> starts;
    for (const QString& id : productsWithAbout5000Movements(context)) {
        const Ref<Product> product = context.find<Product>(QUuid(id));
        Ref<InventoryMovement> after;
        for (int page = 0; page < depth; ++page)
            after = inventory.movements(product, after).last();
        starts.append({product, after});
    }
    if (starts.isEmpty()) {
        state.SkipWithError("no product has about 5,000 movements");
        return;
    }
    // The plan of the page read below, with the key when there is one.
    const auto [firstProduct, firstAfter] = starts.first();
    Condition filter = InventoryMovement::Col::product == firstProduct;
    if (firstAfter)
        filter = filter && Condition(QStringLiteral("(\"timestamp\", rowid) < (SELECT \"timestamp\", rowid FROM "
                                                    "\"InventoryMovement\" WHERE \"id\" = ?)"),
                                     {firstAfter->idText()});
    const FetchDescriptor page = FetchDescriptor(filter)
                                     .sortedBy(descending(InventoryMovement::Col::timestamp))
                                     .sortedBy(descending(Column{"rowid"}))
                                     .limitedTo(InventoryViewModel::movementPageSize);
    const QString plan =
        queryPlan(context, fetchSql(InventoryMovement::schema(), page), page.filter.bindings());
    if (plan.contains(QStringLiteral("TEMP B-TREE")) ||
        !plan.contains(QStringLiteral("InventoryMovement_product_timestamp"))) {
        state.SkipWithError(qPrintable(QStringLiteral("the page is not read along the index: ") + plan));
        return;
    }
    static const bool told = std::fprintf(stderr, "Movement page plan: %s\n", qPrintable(plan)) > 0;
    (void)told;

    qsizetype next = 0;
    qint64 rows = 0;
    for (auto _ : state) {
        // Another product each time: its rows aren't live objects yet, as when the screen opens it.
        const auto& [product, after] = starts[next++ % starts.size()];
        rows += inventory.movements(product, after).size();
    }
    state.counters["products"] = double(starts.size());
    state.counters["rows"] = benchmark::Counter(double(rows), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_MovementHistoryPage)
    ->ArgName("pages_scrolled")
    ->Arg(0)
    ->Arg(50)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// The Products screen opening on 50,000 products: the first page of the list by name, with each
// row's category; a page deep down; a search that finds a handful and one that finds many; and
// the low-stock filter.
void BM_ProductsListPage(benchmark::State& state)
{
    ManyProductsStore& store = ManyProductsStore::instance();
    ModelContainer container(store.path(), POSSchema::description());
    ModelContext& context = container.mainContext();
    SessionStore session;
    ProductsViewModel products(context, session);
    const int kind = int(state.range(0));
    std::optional<ProductListRow> after;
    switch (kind) {
    case 1: {
        // The last row of page 250, keyed by (name, id) like any other.
        const QList<ProductListRow> shown = products.page(nullptr, 25000);
        after = shown.last();
        break;
    }
    case 2:
        products.setSearchText(QStringLiteral("duct 4999"));
        break;
    case 3:
        products.setSearchText(QStringLiteral("7"));
        break;
    case 4:
        products.setShowOnlyLowStock(true);
        break;
    default:
        break;
    }
    qsizetype rows = 0;
    for (auto _ : state)
        rows = products.page(after ? &*after : nullptr).size();
    if (products.errorMessage())
        state.SkipWithError(qPrintable(*products.errorMessage()));
    if (kind == 0) {
        static const bool told =
            std::fprintf(
                stderr, "Products page plan: %s\n",
                qPrintable(queryPlan(context,
                                     QStringLiteral("SELECT p.\"id\" FROM \"Product\" p LEFT JOIN "
                                                    "\"Category\" c ON c.\"id\" = p.\"category\" ORDER BY "
                                                    "p.\"name\", p.\"id\" LIMIT 100"),
                                     {}))) > 0;
        (void)told;
    }
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_ProductsListPage)
    ->ArgName("first0_deep1_rare2_common3_lowstock4")
    ->DenseRange(0, 4)
    ->Unit(benchmark::kMillisecond);

} // namespace
