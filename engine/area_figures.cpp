#include "engine/area_figures.h"

#include <algorithm>
#include <cmath>

namespace orva {

std::optional<AreaFigures> areaFigures(std::span<const float> levels)
{
    double sum = 0;
    int count = 0;
    float least = INFINITY;
    float largest = -INFINITY;
    for (const float level : levels) {
        if (!std::isfinite(level))
            continue;
        sum += level;
        ++count;
        least = std::min(least, level);
        largest = std::max(largest, level);
    }
    if (count == 0)
        return std::nullopt;
    return AreaFigures{sum / count, static_cast<double>(largest) - least};
}

std::optional<double> audienceMean(std::span<const std::optional<AreaFigures>> areas)
{
    double sum = 0;
    int count = 0;
    for (const std::optional<AreaFigures>& area : areas)
        if (area) {
            sum += area->mean;
            ++count;
        }
    return count > 0 ? std::optional(sum / count) : std::nullopt;
}

} // namespace orva
