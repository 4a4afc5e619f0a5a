#pragma once

#include "store/modelcontext.h"

#include <QString>

// The five-year store, made once and kept between runs: generating it takes far longer than any
// benchmark. TALLYRUN_BENCH_STORE names another file to use.
QString fiveYearStorePath();

// A writable copy of the five-year store, made once per run, so that what the benchmarks write
// never reaches the store every other benchmark reads.
QString fiveYearStoreCopy();

// The EXPLAIN QUERY PLAN lines of a statement, joined with " | ".
QString queryPlan(ModelContext& context, const QString& sql, const QVariantList& bindings);
