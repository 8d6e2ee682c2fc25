#include "optimize/point_order.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>

namespace orva {

namespace {

constexpr std::size_t kMostLearned = 64;
constexpr std::size_t kMostToLearnFrom = 256;

/// Appends the points that are not in the order yet, spread ever more closely, and makes the
/// stages.
PointOrder completed(std::vector<std::size_t> points, std::size_t count)
{
    PointOrder order;
    order.points = std::move(points);
    std::vector<char> taken(count, 0);
    for (const std::size_t point : order.points)
        taken[point] = 1;
    order.points.reserve(count);
    std::size_t step = 1;
    while (step * PointOrder::kGroup < count)
        step *= 2;
    for (; step > 0; step /= 2)
        for (std::size_t point = 0; point < count; point += step)
            if (!taken[point]) {
                taken[point] = 1;
                order.points.push_back(point);
            }

    // Few groups tell of most configurations; who gets far mostly gets through.
    for (std::size_t groups = 1; groups * PointOrder::kGroup < count; groups += 1 + groups / 4) {
        const std::size_t end = groups * PointOrder::kGroup;
        order.stages.push_back(
            {end, {order.points.begin(), order.points.begin() + static_cast<std::ptrdiff_t>(end)}});
        std::sort(order.stages.back().known.begin(), order.stages.back().known.end());
    }
    std::vector<std::size_t> all(count);
    std::iota(all.begin(), all.end(), std::size_t{0});
    order.stages.push_back({count, std::move(all)});
    return order;
}

} // namespace

PointOrder PointOrder::coarseToFine(std::size_t points)
{
    assert(points >= 2);
    return completed({}, points);
}

PointOrder PointOrder::learned(Measure measure, const std::vector<std::vector<double>>& samples)
{
    assert(samples.size() >= 3);
    const MeasureRecord& record = recordOf(measure);
    const std::size_t count = samples.front().size();
    const std::vector<std::size_t> all = coarseToFine(count).stages.back().known;
    std::vector<double> totals;
    totals.reserve(samples.size());
    for (const std::vector<double>& sample : samples) {
        const double total = record.sum(sample, all);
        totals.push_back(std::isnan(total) ? std::numeric_limits<double>::infinity() : total);
    }
    std::nth_element(totals.begin(), totals.begin() + 2, totals.end());
    const double enough = totals[2];

    const std::size_t step = (count + kMostToLearnFrom - 1) / kMostToLearnFrom;
    std::vector<std::size_t> order;
    std::vector<std::size_t> known;
    std::vector<double> sums(samples.size(), 0.0);
    std::vector<double> grown;
    while (order.size() < kMostLearned) {
        double most = -1;
        std::size_t best = count;
        for (std::size_t point = 0; point < count; point += step) {
            const auto right = std::lower_bound(known.cbegin(), known.cend(), point);
            if (right != known.cend() && *right == point)
                continue;
            grown = sums;
            record.grow(samples, known, right, point, grown);
            double told = 0;
            for (const double sum : grown)
                told += std::min(enough, sum);
            if (told > most) {
                most = told;
                best = point;
            }
        }
        if (best == count)
            break;
        const auto right = std::lower_bound(known.cbegin(), known.cend(), best);
        record.grow(samples, known, right, best, sums);
        known.insert(right, best);
        order.push_back(best);
    }
    return completed(std::move(order), count);
}

} // namespace orva
