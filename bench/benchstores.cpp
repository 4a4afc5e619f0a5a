#include "benchstores.h"

#include "storegenerator.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

#include <unistd.h>

QString fiveYearStorePath()
{
    static const QString path = [] {
        QString file = qEnvironmentVariable("TALLYRUN_BENCH_STORE");
        if (file.isEmpty())
            file = QDir::tempPath() + QStringLiteral("/tallyrun-bench/five-year.store");
        if (!QFileInfo::exists(file)) {
            QDir().mkpath(QFileInfo(file).absolutePath());
            std::fprintf(stderr, "Generating %s; later runs reuse it.\n", qPrintable(file));
            StoreGenerator::Options options;
            options.progress = [](const QString& text) { std::fprintf(stderr, "  %s\n", qPrintable(text)); };
            const StoreGenerator::Summary summary = StoreGenerator(options).generate(file);
            std::fprintf(stderr, "  done in %.1f s, %lld bytes\n", summary.seconds,
                         (long long)summary.fileBytes);
        }
        return file;
    }();
    return path;
}

QString fiveYearStoreCopy()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString original = fiveYearStorePath();
        const QString copy = folder.filePath(QStringLiteral("five-year-copy.store"));
        QElapsedTimer timer;
        timer.start();
        QFile::copy(original, copy);
        // Whatever the last writer left uncheckpointed belongs to the store as well.
        if (QFileInfo(original + QStringLiteral("-wal")).size() > 0)
            QFile::copy(original + QStringLiteral("-wal"), copy + QStringLiteral("-wal"));
        // On disk before anything is timed: otherwise the first commits' syncs wait for the
        // gigabytes of the copy to be written out.
        ::sync();
        std::fprintf(stderr, "Copied the five-year store in %.1f s\n", timer.elapsed() / 1000.0);
        return copy;
    }();
    return path;
}

QString queryPlan(ModelContext& context, const QString& sql, const QVariantList& bindings)
{
    SqliteStatement statement = context.connection().prepare(QStringLiteral("EXPLAIN QUERY PLAN ") + sql);
    statement.bindAll(bindings);
    QStringList lines;
    while (statement.step())
        lines << statement.text(3);
    return lines.join(QStringLiteral(" | "));
}
