#include "money/taxsetup.h"

#include "money/currency.h"
#include "money/rounding.h"
#include "records/records.h"
#include "store/modelcontext.h"
#include "store/unitofwork.h"

#include <cmath>
#include <map>

double TaxSetup::shareSum(const TaxGroup& group)
{
    double sum = 0;
    for (const TaxComponent& component : group.components())
        sum += component.share;
    return sum;
}

void TaxSetup::ensure(ModelContext& context, const Ref<AppSettings>& settings)
{
    performUnitOfWork(context, [&] { seedOnce(context, settings); });
}

void TaxSetup::seedOnce(ModelContext& context, const Ref<AppSettings>& settings)
{
    // A count that fails throws: taken for none, it would seed a second set of taxes.
    if (context.count<Tax>() != 0)
        return;

    const QList<Ref<Tax>> standardTaxes = {
        Tax::make(QStringLiteral("NHIL"), 0.025, false, 0),
        Tax::make(QStringLiteral("GETFund Levy"), 0.025, false, 1),
        Tax::make(QStringLiteral("VAT"), 0.15, false, 2),
    };
    for (const Ref<Tax>& tax : standardTaxes)
        context.insert(tax);
    const Ref<TaxGroup> standard = TaxGroup::make(standardGroupName(), standardTaxes, 0);
    context.insert(standard);
    const double standardSum = shareSum(*standard);

    std::map<double, Ref<TaxGroup>> madeForRate;
    auto groupForRate = [&](double rate) -> Ref<TaxGroup> {
        const double r = Rounding::toPlaces(rate, 6);
        if (std::abs(standardSum - r) < 0.000000001)
            return standard;
        if (auto found = madeForRate.find(r); found != madeForRate.end())
            return found->second;
        const qint64 sortOrder = 10 + qint64(madeForRate.size());
        const Ref<Tax> tax = Tax::make(QStringLiteral("Tax"), r, false, sortOrder);
        context.insert(tax);
        const Ref<TaxGroup> group =
            TaxGroup::make(QStringLiteral("Tax %1").arg(Currency::percentText(r)), {tax}, sortOrder);
        context.insert(group);
        madeForRate.emplace(r, group);
        return group;
    };

    for (const Ref<Product>& product : context.fetch<Product>()) {
        if (product->taxGroup())
            continue;
        if (!(product->taxRate() > 0)) {
            product->setIsTaxable(false);
            product->setTaxRate(0);
        } else {
            product->setTaxGroup(groupForRate(product->taxRate()));
        }
    }
    if (settings) {
        const Ref<TaxGroup> preferred =
            settings->defaultTaxRate() > 0 ? groupForRate(settings->defaultTaxRate()) : standard;
        settings->setDefaultTaxGroupID(preferred->id());
    }
}

QList<Ref<TaxGroup>> TaxSetup::groups(ModelContext& context)
{
    QList<Ref<TaxGroup>> all = context.fetch<TaxGroup>();
    std::stable_sort(all.begin(), all.end(), [](const Ref<TaxGroup>& a, const Ref<TaxGroup>& b) {
        if (a->sortOrder() != b->sortOrder())
            return a->sortOrder() < b->sortOrder();
        return a->name() < b->name();
    });
    return all;
}

Ref<TaxGroup> TaxSetup::defaultGroup(ModelContext& context, const Ref<AppSettings>& settings)
{
    const QList<Ref<TaxGroup>> all = groups(context);
    if (all.isEmpty())
        return nullptr;
    if (settings && settings->defaultTaxGroupID()) {
        for (const Ref<TaxGroup>& group : all) {
            if (group->id() == *settings->defaultTaxGroupID())
                return group;
        }
    }
    return all.first();
}

void TaxSetup::sync(Product& product)
{
    if (!product.isTaxable())
        product.setTaxRate(0);
    else if (const Ref<TaxGroup> group = product.taxGroup())
        product.setTaxRate(shareSum(*group));
    // A taxable product with no group keeps the rate kept by hand.
}

void TaxSetup::syncAll(ModelContext& context)
{
    performUnitOfWork(context, [&] {
        for (const Ref<Product>& product : context.fetch<Product>())
            sync(*product);
    });
}

void TaxSetup::applyDefault(const Ref<Product>& product, ModelContext& context,
                            const Ref<AppSettings>& settings)
{
    ensure(context, settings);
    product->setIsTaxable(true);
    product->setTaxGroup(defaultGroup(context, settings));
    sync(*product);
}

qsizetype TaxSetup::moveProducts(const Ref<TaxGroup>& from, const Ref<TaxGroup>& to, ModelContext& context)
{
    return performUnitOfWork(context, [&] {
        const QList<Ref<Product>> products = from->products();
        const double rate = to ? shareSum(*to) : 0;
        for (const Ref<Product>& product : products) {
            product->setTaxGroup(to);
            if (product->isTaxable() && to)
                product->setTaxRate(rate);
            else if (!product->isTaxable())
                product->setTaxRate(0);
        }
        return products.size();
    });
}

void TaxSetup::remove(const Ref<Tax>& tax, ModelContext& context)
{
    performUnitOfWork(context, [&] {
        for (const Ref<TaxGroup>& group : tax->groups()) {
            QList<Ref<Tax>> remaining = group->taxes();
            remaining.removeIf([&](const Ref<Tax>& member) { return member->id() == tax->id(); });
            group->setTaxes(remaining);
        }
        context.remove(tax);
        syncAll(context);
    });
}

std::vector<TaxAmount> TaxSetup::breakdown(const QList<Ref<SaleItem>>& items, double total)
{
    std::vector<std::vector<TaxAmount>> perItem;
    perItem.reserve(size_t(items.size()));
    for (const Ref<SaleItem>& item : items)
        perItem.push_back(item->taxBreakdown());
    return TaxBreakdown::combine(perItem, total);
}
