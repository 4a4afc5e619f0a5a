#include "money/taxbreakdown.h"

#include "money/currency.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

std::vector<TaxAmount> TaxBreakdown::forLine(const std::vector<TaxComponent>& components, double quantity,
                                             double unitPrice, double lineDiscount, double taxRateSnapshot,
                                             bool pricesIncludeTax)
{
    std::vector<TaxComponent> used = components;
    if (used.empty() && taxRateSnapshot > 0)
        used.push_back(
            {QStringLiteral("Tax (%1)").arg(Currency::percentText(taxRateSnapshot)), taxRateSnapshot});

    double shareSum = 0;
    for (const TaxComponent& component : used)
        shareSum += component.share;
    if (shareSum <= 0)
        return {};

    double lineTax = (quantity * unitPrice - lineDiscount) * taxRateSnapshot;
    if (pricesIncludeTax)
        lineTax /= taxRateSnapshot + 1;

    std::vector<TaxAmount> amounts;
    amounts.reserve(used.size());
    for (const TaxComponent& component : used)
        amounts.push_back({component.label, component.share * lineTax / shareSum});
    return amounts;
}

std::vector<TaxAmount> TaxBreakdown::combine(const std::vector<std::vector<TaxAmount>>& perItem, double total)
{
    std::vector<TaxAmount> sums;
    for (const std::vector<TaxAmount>& item : perItem) {
        for (const TaxAmount& entry : item) {
            auto found = std::find_if(sums.begin(), sums.end(),
                                      [&](const TaxAmount& sum) { return sum.label == entry.label; });
            if (found == sums.end())
                sums.push_back(entry);
            else
                found->amount += entry.amount;
        }
    }
    if (sums.empty())
        return {};

    const size_t count = sums.size();
    std::vector<double> cents(count);
    std::vector<int64_t> wholes(count);
    for (size_t i = 0; i < count; ++i) {
        cents[i] = std::abs(sums[i].amount) * 100;
        // The nudge keeps 100.99999999 from losing a cent it has in all but binary.
        wholes[i] = int64_t(std::floor(cents[i] + 0.0000001));
    }
    const int64_t target = int64_t(std::round(std::abs(total) * 100));
    int64_t left = target - std::accumulate(wholes.begin(), wholes.end(), int64_t(0));

    if (left > 0) {
        std::vector<size_t> order(count);
        std::iota(order.begin(), order.end(), size_t(0));
        std::stable_sort(order.begin(), order.end(),
                         [&](size_t a, size_t b) { return cents[a] - wholes[a] > cents[b] - wholes[b]; });
        // The same as handing out one cent a label round the order, without a pass per cent.
        const int64_t rounds = left / int64_t(count);
        const int64_t rest = left % int64_t(count);
        for (size_t i = 0; i < count; ++i)
            wholes[order[i]] += rounds + (int64_t(i) < rest ? 1 : 0);
    }

    const double sign = total < 0 ? -1.0 : 1.0;
    for (size_t i = 0; i < count; ++i)
        sums[i].amount = sign * (double(wholes[i]) / 100);
    return sums;
}
