#pragma once

#include "money/taxbreakdown.h"
#include "records/recordsfwd.h"
#include "store/record.h"

class ModelContext;

// The store's taxes and groups: seeding them once, keeping products' total rates in step with
// their groups, and the tax block of receipts and reports. Each write is a unit of work (or part
// of the caller's); a store failure throws StoreError with nothing written, for the caller to
// report: a failed read is never taken for "none".
class TaxSetup {
public:
    static void ensure(ModelContext& context, const Ref<AppSettings>& settings);
    static QList<Ref<TaxGroup>> groups(ModelContext& context);
    static Ref<TaxGroup> defaultGroup(ModelContext& context, const Ref<AppSettings>& settings);
    static void sync(Product& product);
    static void syncAll(ModelContext& context);
    static void applyDefault(const Ref<Product>& product, ModelContext& context,
                             const Ref<AppSettings>& settings);
    static qsizetype moveProducts(const Ref<TaxGroup>& from, const Ref<TaxGroup>& to, ModelContext& context);
    static void remove(const Ref<Tax>& tax, ModelContext& context);
    static std::vector<TaxAmount> breakdown(const QList<Ref<SaleItem>>& items, double total);

    static QString standardGroupName() { return QStringLiteral("Standard (VAT + NHIL + GETFund)"); }

private:
    static void seedOnce(ModelContext& context, const Ref<AppSettings>& settings);
    static double shareSum(const TaxGroup& group);
};
