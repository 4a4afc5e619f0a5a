#include "benchstores.h"

#include "clock/clock.h"
#include "money/taxcalculator.h"
#include "records/posschema.h"
#include "records/records.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr double secondsPerDay = 86400.0;

QString emptyStorePath()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("empty.store"));
        ModelContainer container(file, POSSchema::description());
        return file;
    }();
    return path;
}

// What the main window needs before it can show anything.
void loadFirstWindow(ModelContext& context)
{
    Ref<AppSettings> settings = context.fetchFirst<AppSettings>();
    Ref<TillShift> shift =
        context.fetchFirst<TillShift>(FetchDescriptor(TillShift::Col::statusRaw == QStringLiteral("open")));
    benchmark::DoNotOptimize(settings);
    benchmark::DoNotOptimize(shift);
}

void openAndLoad(benchmark::State& state, const QString& path)
{
    for (auto _ : state) {
        ModelContainer container(path, POSSchema::description());
        loadFirstWindow(container.mainContext());
    }
}

void BM_OpenGeneratedStore(benchmark::State& state)
{
    openAndLoad(state, fiveYearStorePath());
}
BENCHMARK(BM_OpenGeneratedStore)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_OpenEmptyStore(benchmark::State& state)
{
    openAndLoad(state, emptyStorePath());
}
BENCHMARK(BM_OpenEmptyStore)->UseRealTime()->Unit(benchmark::kMillisecond);

// Midnights of a run of days around the middle of the store's history.
std::vector<QDateTime> middleDays(ModelContext& context, int count)
{
    const double first = context.scalar(QStringLiteral("SELECT MIN(timestamp) FROM Sale")).toDouble();
    const double last = context.scalar(QStringLiteral("SELECT MAX(timestamp) FROM Sale")).toDouble();
    const double middle = std::floor((first + last) / 2 / secondsPerDay) * secondsPerDay;
    std::vector<QDateTime> days;
    for (int i = 0; i < count; ++i)
        days.push_back(QDateTime::fromSecsSinceEpoch(qint64(middle + (i - count / 2) * secondsPerDay),
                                                     QTimeZone::utc()));
    return days;
}

// A new day each iteration reads pages that aren't in SQLite's cache yet, as the day's report
// does; the same day over and over shows what is left once they are.
void BM_FetchOneDaysSalesWithLines(benchmark::State& state, bool varyDay)
{
    ModelContainer container(fiveYearStorePath(), POSSchema::description());
    ModelContext& context = container.mainContext();
    const std::vector<QDateTime> days = middleDays(context, 256);
    size_t next = 0;
    qint64 sales = 0;
    qint64 lines = 0;
    for (auto _ : state) {
        const QDateTime from = days[varyDay ? next++ % days.size() : days.size() / 2];
        const QList<Ref<Sale>> found = context.fetch<Sale>(
            FetchDescriptor(Sale::Col::timestamp >= from && Sale::Col::timestamp < from.addDays(1)));
        for (const Ref<Sale>& sale : found)
            lines += sale->items().size();
        sales += found.size();
    }
    state.counters["sales"] = benchmark::Counter(double(sales), benchmark::Counter::kAvgIterations);
    state.counters["lines"] = benchmark::Counter(double(lines), benchmark::Counter::kAvgIterations);
}
BENCHMARK_CAPTURE(BM_FetchOneDaysSalesWithLines, varyingDay, true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_FetchOneDaysSalesWithLines, sameDay, false)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// A big basket: mixed rates, some line discounts and a sale discount to spread.
void BM_TaxCalculate50Lines(benchmark::State& state)
{
    std::vector<TaxCalculator::LineInput> lines;
    for (int i = 0; i < 50; ++i)
        lines.push_back({1.5 + (i * 37 % 200) * 0.85, i % 7 == 0 ? 1.0 : 0.0, i % 5 == 0 ? 0.0 : 0.2});
    const bool inclusive = state.range(0) != 0;
    for (auto _ : state) {
        CartCalculation cart = TaxCalculator::calculate(lines, 5.0, inclusive);
        benchmark::DoNotOptimize(cart);
    }
}
BENCHMARK(BM_TaxCalculate50Lines)->ArgName("inclusive")->Arg(0)->Arg(1);

struct Resident {
    double rssKiB = 0;
    double hwmKiB = 0;
};

Resident readResident()
{
    Resident resident;
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return resident;
    for (const QByteArray& line : status.readAll().split('\n')) {
        const QList<QByteArray> parts = line.simplified().split(' ');
        if (parts.size() >= 2 && parts[0] == "VmRSS:")
            resident.rssKiB = parts[1].toDouble();
        else if (parts.size() >= 2 && parts[0] == "VmHWM:")
            resident.hwmKiB = parts[1].toDouble();
    }
    return resident;
}

// Runs in a fresh process (see BM_ResidentMemoryAfterOpen) and prints its figures in KiB.
int residentProbe(const char* path)
{
    const Resident before = readResident();
    try {
        ModelContainer container(QString::fromLocal8Bit(path), POSSchema::description());
        loadFirstWindow(container.mainContext());
        const Resident after = readResident();
        std::printf("%.0f %.0f %.0f\n", before.rssKiB, after.rssKiB, after.hwmKiB);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

// Measured in a child process: this one has made stores and run other benchmarks, which would
// count in its own resident set and high-water mark.
void BM_ResidentMemoryAfterOpen(benchmark::State& state, bool generated)
{
    const QString path = generated ? fiveYearStorePath() : emptyStorePath();
    QList<QByteArray> figures;
    for (auto _ : state) {
        QProcess probe;
        probe.start(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget(),
                    {QStringLiteral("--resident-probe"), path});
        if (!probe.waitForFinished(120000) || probe.exitCode() != 0) {
            state.SkipWithError("the probe process failed");
            return;
        }
        figures = probe.readAllStandardOutput().simplified().split(' ');
    }
    if (figures.size() != 3) {
        state.SkipWithError("the probe printed no figures");
        return;
    }
    const double mib = 1024.0;
    state.counters["VmRSS_before_MiB"] = figures[0].toDouble() / mib;
    state.counters["VmRSS_MiB"] = figures[1].toDouble() / mib;
    state.counters["VmHWM_MiB"] = figures[2].toDouble() / mib;
    state.counters["opened_MiB"] = (figures[1].toDouble() - figures[0].toDouble()) / mib;
}
BENCHMARK_CAPTURE(BM_ResidentMemoryAfterOpen, generated, true)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ResidentMemoryAfterOpen, empty, false)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    Clock::readLocalZoneOnce();
    if (argc == 3 && std::strcmp(argv[1], "--resident-probe") == 0)
        return residentProbe(argv[2]);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
