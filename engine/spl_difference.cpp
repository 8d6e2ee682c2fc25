#include "engine/spl_difference.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace orva {

float levelDifference(float a, float b)
{
    return std::isfinite(a) && std::isfinite(b) ? b - a : -std::numeric_limits<float>::infinity();
}

SummedMap mapDifference(const SummedMap& a, const SummedMap& b)
{
    assert(a.levels.size() == b.levels.size());
    constexpr float kNone = std::numeric_limits<float>::infinity();
    SummedMap difference{std::vector<float>(a.levels.size()), -kNone, kNone};
    for (std::size_t i = 0; i < a.levels.size(); ++i) {
        const float level = levelDifference(a.levels[i], b.levels[i]);
        difference.levels[i] = level;
        difference.max = std::max(difference.max, level);
        if (std::isfinite(level))
            difference.min = std::min(difference.min, level);
    }
    if (difference.min == kNone)
        difference.min = -kNone;
    return difference;
}

std::optional<DifferenceFigures> differenceFigures(std::span<const float> a,
                                                   std::span<const float> b)
{
    assert(a.size() == b.size());
    std::vector<float> differences;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (const float level = levelDifference(a[i], b[i]); std::isfinite(level))
            differences.push_back(level);
    if (differences.empty())
        return std::nullopt;
    double sum = 0;
    for (const float level : differences)
        sum += level;
    const auto [min, max] = std::minmax_element(differences.begin(), differences.end());
    return DifferenceFigures{sum / static_cast<double>(differences.size()), *max, *min};
}

} // namespace orva
