// tallyrun_generate <path> [--seed N] [--scale F]: writes a generated shop history to a new store
// file, replacing any file at path.

#include "storegenerator.h"

#include <QLocale>

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>

namespace {
int usage()
{
    std::fprintf(stderr, "usage: tallyrun_generate <path> [--seed N] [--scale F]\n"
                         "  Replaces any file at <path>. Scale 1.0 is five years of a busy shop.\n");
    return 2;
}
} // namespace

int main(int argc, char** argv)
{
    QString path;
    StoreGenerator::Options options;
    for (int i = 1; i < argc; ++i) {
        const bool hasValue = i + 1 < argc;
        try {
            if (std::strcmp(argv[i], "--seed") == 0 && hasValue)
                options.seed = std::stoull(argv[++i]);
            else if (std::strcmp(argv[i], "--scale") == 0 && hasValue)
                options.scale = std::stod(argv[++i]);
            else if (argv[i][0] != '-' && path.isEmpty())
                path = QString::fromLocal8Bit(argv[i]);
            else
                return usage();
        } catch (const std::exception&) {
            return usage();
        }
    }
    if (path.isEmpty() || !(options.scale > 0 && options.scale <= 10))
        return usage();

    options.progress = [](const QString& text) { std::fprintf(stderr, "%s\n", qPrintable(text)); };
    try {
        const StoreGenerator::Summary summary = StoreGenerator(options).generate(path);
        const QLocale locale(QLocale::English, QLocale::UnitedStates);
        std::printf("%s: %.1f s, %s bytes\n", qPrintable(path), summary.seconds,
                    qPrintable(locale.toString(qint64(summary.fileBytes))));
        for (const auto& [table, rows] : summary.rowCounts)
            std::printf("  %-18s %12s\n", qPrintable(table), qPrintable(locale.toString(qint64(rows))));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tallyrun_generate: %s\n", error.what());
        return 1;
    }
    return 0;
}
