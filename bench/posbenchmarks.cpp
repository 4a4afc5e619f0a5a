// The counter on a catalogue of 50,000 products, made here: a scan, a keystroke in the search
// field, reading the grid's rows again after a save, and Complete Sale end to end; first in the
// view model alone, then on the workspace's real widgets under the offscreen platform, each
// measured until what the cashier sees is painted.

#include "environment/appenvironment.h"
#include "pos/posviewmodel.h"
#include "records/posschema.h"
#include "records/records.h"
#include "startup/sessionstore.h"
#include "store/modelcontainer.h"
#include "store/unitofwork.h"

#include <benchmark/benchmark.h>

#include "ui/navigation/posactionbus.h"
#include "ui/pos/cartlinerow.h"
#include "ui/pos/cartpanelview.h"
#include "ui/pos/posworkspaceview.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>

#include <memory>

namespace {

constexpr int productCount = 50'000;

struct NoPrinters : PrinterDirectory {
    QList<InstalledPrinter> installedPrinters() override { return {}; }
};
struct NoTransport : RawPrintTransport {
    void send(const QByteArray&, const QString&) override {}
};
struct NoReceiptPrinter : ReceiptPrinting {
    void printReceipt(const ReceiptData&, bool, const std::optional<InstalledPrinter>&) override {}
    void exportPDF(const ReceiptData&, bool, const QString&) override {}
};

QString barcodeOf(int i)
{
    return QStringLiteral("600%1").arg(i, 9, 10, QLatin1Char('0'));
}

// A shop of 50,000 products in 40 categories, an open till and a cashier, made once per run.
struct Counter {
    QTemporaryDir folder;
    ModelContainer container{folder.filePath(QStringLiteral("counter.store")), POSSchema::description()};
    ModelContext& context = container.mainContext();
    std::unique_ptr<AppEnvironment> environment;
    SessionStore session;
    std::unique_ptr<POSViewModel> pos;

    Counter()
    {
        static const char* const words[] = {"Rice",  "Soap",   "Milk",   "Bread", "Sugar", "Tea",    "Oil",
                                            "Beans", "Tomato", "Onion",  "Salt",  "Flour", "Coffee", "Juice",
                                            "Water", "Soda",   "Biscuit", "Candle", "Match", "Battery"};
        performUnitOfWork(context, [&] {
            QList<Ref<Category>> categories;
            for (int c = 0; c < 40; ++c) {
                auto category = std::make_shared<Category>();
                category->setName(QStringLiteral("Aisle %1").arg(c + 1));
                context.insert(category);
                categories.append(category);
            }
            for (int i = 0; i < productCount; ++i) {
                auto product = std::make_shared<Product>();
                product->setName(QStringLiteral("%1 %2 %3g")
                                     .arg(QString::fromLatin1(words[i % 20]), QString::fromLatin1(words[(i / 20) % 20]))
                                     .arg(i));
                product->setSku(QStringLiteral("SKU-%1").arg(i, 6, 10, QLatin1Char('0')));
                product->setBarcode(barcodeOf(i));
                product->setSellingPrice(1 + i % 300);
                product->setCostPrice(0.5 + i % 300 / 2.0);
                product->setStockQuantity(1'000'000);
                product->setCategory(categories[i % 40]);
                context.insert(product);
            }
            auto cashier = std::make_shared<User>();
            cashier->setName(QStringLiteral("Ama"));
            cashier->setUsername(QStringLiteral("ama"));
            context.insert(cashier);
            session.setCurrentUser(cashier);
        });
        ReceiptDevices devices{std::make_unique<NoPrinters>(), std::make_unique<NoTransport>(),
                               std::make_unique<NoReceiptPrinter>()};
        environment = std::make_unique<AppEnvironment>(context, nullptr, nullptr, std::move(devices));
        session.setSettings(environment->loadOrCreateSettings());
        session.setCurrentTillShift(environment->tillService().openShift(session.currentUser(), 100));
        pos = std::make_unique<POSViewModel>(*environment, session);
    }
};

Counter& counter()
{
    static Counter made;
    return made;
}

void BM_POSScanOf50kProducts(benchmark::State& state)
{
    ProductGridModel& products = counter().pos->products();
    int i = 0;
    for (auto _ : state) {
        const Ref<Product> found = products.productWithCode(barcodeOf(i));
        benchmark::DoNotOptimize(found);
        i = (i + 7919) % productCount;
    }
}
BENCHMARK(BM_POSScanOf50kProducts)->Unit(benchmark::kMicrosecond);

// A first letter filters all 50,000 rows; each further letter filters what the one before found.
void BM_POSSearchKeystrokeOver50kProducts(benchmark::State& state)
{
    const bool narrowing = state.range(0) != 0;
    POSViewModel& pos = *counter().pos;
    const QStringList typed = narrowing ? QStringList{QStringLiteral("t"), QStringLiteral("te")}
                                        : QStringList{QStringLiteral("a"), QStringLiteral("e")};
    int i = 0;
    for (auto _ : state) {
        if (narrowing) {
            state.PauseTiming();
            pos.setSearchText(typed[0]);
            state.ResumeTiming();
            pos.setSearchText(typed[1]);
        } else {
            pos.setSearchText(typed[i++ % 2]);
        }
        benchmark::DoNotOptimize(pos.products().rowCount());
    }
    pos.setSearchText(QString());
    state.SetLabel(narrowing ? "one more letter" : "a new first letter");
}
BENCHMARK(BM_POSSearchKeystrokeOver50kProducts)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// What every save touching products costs the grid.
void BM_POSGridReloadOf50kProducts(benchmark::State& state)
{
    ProductGridModel& products = counter().pos->products();
    for (auto _ : state) {
        products.reload();
        benchmark::DoNotOptimize(products.rowCount());
    }
}
BENCHMARK(BM_POSGridReloadOf50kProducts)->Unit(benchmark::kMillisecond);

// Five lines rung up by scanning, paid in cash, the drawer opened: the sale, its audit rows, the
// empty cart, and the grid read again for the new stock.
void BM_POSCompleteSaleFiveLines(benchmark::State& state)
{
    POSViewModel& pos = *counter().pos;
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (int line = 0; line < 5; ++line) {
            pos.setSearchText(barcodeOf((i * 5 + line) * 131 % productCount));
            pos.submitSearch();
        }
        ++i;
        const double total = pos.paymentSheetInputs().total;
        state.ResumeTiming();
        if (!pos.completeSale({{PaymentMethodType::cash, total, total + 20, {}}})) {
            state.SkipWithError(pos.errorMessage().value_or(QString()).toStdString().c_str());
            break;
        }
    }
}
BENCHMARK(BM_POSCompleteSaleFiveLines)->Unit(benchmark::kMillisecond)->UseRealTime();

// The workspace on screen over the same shop, sized as on a counter PC.
struct Screen {
    POSActionBus bus;
    POSWorkspaceView workspace{*counter().environment, counter().session, *counter().pos, bus};

    Screen()
    {
        workspace.resize(1280, 800);
        workspace.show();
        settle();
    }

    // Layout and paint, as the next frame would.
    void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        benchmark::DoNotOptimize(workspace.grab());
    }
};

Screen& screen()
{
    static Screen made;
    return made;
}

double residentMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

// A barcode typed and Return pressed, until the new line is painted in the cart: into an empty
// cart, and into one of 100 lines.
void BM_CounterScanToLineOnScreen(benchmark::State& state)
{
    Screen& shown = screen();
    POSViewModel& pos = *counter().pos;
    const int linesBefore = int(state.range(0));
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        pos.cancelSale();
        for (int line = 0; line < linesBefore; ++line) {
            pos.setSearchText(barcodeOf(40'000 + line));
            pos.submitSearch();
        }
        shown.settle();
        QLineEdit* field = shown.workspace.searchField();
        state.ResumeTiming();
        field->setText(barcodeOf(i++ % 30'000));
        Q_EMIT field->textEdited(field->text());
        Q_EMIT field->returnPressed();
        QCoreApplication::sendPostedEvents();
        benchmark::DoNotOptimize(shown.workspace.cartPanel()->grab());
    }
    state.counters["rss_MB"] = residentMegabytes();
}
BENCHMARK(BM_CounterScanToLineOnScreen)->Arg(0)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();

// Return only, the code already typed: what the cashier waits for after the scanner's last key.
void BM_CounterReturnToLineOnScreen(benchmark::State& state)
{
    Screen& shown = screen();
    POSViewModel& pos = *counter().pos;
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        pos.cancelSale();
        shown.settle();
        QLineEdit* field = shown.workspace.searchField();
        field->setText(barcodeOf(i++ % 30'000));
        Q_EMIT field->textEdited(field->text());
        state.ResumeTiming();
        Q_EMIT field->returnPressed();
        QCoreApplication::sendPostedEvents();
        benchmark::DoNotOptimize(shown.workspace.cartPanel()->grab());
    }
    state.counters["rss_MB"] = residentMegabytes();
}
BENCHMARK(BM_CounterReturnToLineOnScreen)->Unit(benchmark::kMillisecond)->UseRealTime();

// One more letter in the search field, until the grid shows what it narrows to.
void BM_CounterSearchKeystrokeOnScreen(benchmark::State& state)
{
    Screen& shown = screen();
    const QStringList typed{QStringLiteral("s"), QStringLiteral("so"), QStringLiteral("soa"), QStringLiteral("soap")};
    int i = 0;
    for (auto _ : state) {
        // As the keys pause: the grid is narrowed at once.
        counter().pos->setSearchText(typed[i++ % typed.size()]);
        QCoreApplication::sendPostedEvents();
        benchmark::DoNotOptimize(shown.workspace.grid()->grab());
    }
    counter().pos->setSearchText(QString());
}
BENCHMARK(BM_CounterSearchKeystrokeOnScreen)->Unit(benchmark::kMillisecond)->UseRealTime();

// Complete Sale from the open payment sheet until the receipt sheet is painted, printing aside.
void BM_CounterCompleteSaleToReceiptSheet(benchmark::State& state)
{
    Screen& shown = screen();
    POSViewModel& pos = *counter().pos;
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (QDialog* open : shown.workspace.findChildren<QDialog*>())
            open->close();
        pos.closeReceiptSheet();
        shown.settle();
        for (int line = 0; line < 5; ++line) {
            pos.setSearchText(barcodeOf((i * 5 + line) * 173 % productCount));
            pos.submitSearch();
        }
        ++i;
        shown.workspace.startCheckout();
        shown.settle();
        const double total = pos.paymentSheetInputs().total;
        state.ResumeTiming();
        if (!pos.completeSale({{PaymentMethodType::cash, total, total + 20, {}}})) {
            state.SkipWithError(pos.errorMessage().value_or(QString()).toStdString().c_str());
            break;
        }
        QCoreApplication::sendPostedEvents();
        QDialog* receipt = shown.workspace.openSheet();
        if (!receipt) {
            state.SkipWithError("no receipt sheet");
            break;
        }
        benchmark::DoNotOptimize(receipt->grab());
    }
}
BENCHMARK(BM_CounterCompleteSaleToReceiptSheet)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
