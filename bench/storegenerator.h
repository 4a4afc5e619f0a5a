#pragma once

#include <QDate>
#include <QString>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

// Makes a store file that looks like five years of a busy Ghanaian shop, for the benchmarks. The
// same seed and scale always give the same rows, so figures from different runs compare.
class StoreGenerator {
public:
    struct Options {
        std::uint64_t seed = 20261121;
        // 1.0 is the full shop; smaller values shrink the counts and the span of days alike, so a
        // small store still has realistic days.
        double scale = 1.0;
        // The last trading day; fixed so that nothing depends on when the generator runs.
        QDate lastDay = QDate(2026, 11, 21);
        // Told a handful of times, for people watching a long run.
        std::function<void(const QString&)> progress;
    };

    struct Summary {
        std::vector<std::pair<QString, std::int64_t>> rowCounts; // per table, as written
        double seconds = 0;
        std::int64_t fileBytes = 0;
    };

    explicit StoreGenerator(Options options)
        : m_options(std::move(options))
    {
    }

    // Replaces any file at path. Throws StoreError or std::runtime_error on failure, leaving no
    // half-made file at path.
    Summary generate(const QString& path);

private:
    Options m_options;
};
