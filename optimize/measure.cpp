#include "optimize/measure.h"

#include <cassert>
#include <cmath>

namespace orva {

FitLineTarget FitLineTarget::wholeArea(const AreaSegment& area)
{
    return {0, area[5], 0, 0};
}

AreaSegment measuredSegment(const AreaSegment& area, const FitLineTarget& target)
{
    const double radians = static_cast<double>(area[4]) * kRadiansPerDegree;
    const auto at = [&](double along) {
        return FloatPair{static_cast<float>(area[0] + along * std::cos(radians)),
                         static_cast<float>(area[1] + along * std::sin(radians))};
    };
    const FloatPair start = at(target.startM);
    const FloatPair end = at(target.startM + target.lengthM);
    const double length = std::max(0.001, target.lengthM);
    return {start[0], start[1], end[0], end[1], area[4], static_cast<float>(length)};
}

std::vector<float> fitReference(const FitLineTarget& target, int points)
{
    assert(points >= 2);
    const double step = target.lengthM / (points - 1);
    std::vector<float> reference(static_cast<std::size_t>(points));
    for (std::size_t i = 0; i < reference.size(); ++i)
        reference[i] =
            static_cast<float>(static_cast<double>(i) * step * target.slopeDbPerM + target.levelDb);
    return reference;
}

double RmsToFitLine(std::span<const float> levels, std::span<const float> reference)
{
    assert(levels.size() == reference.size());
    double sum = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double distance = static_cast<double>(levels[i]) - reference[i];
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(levels.size()));
}

double RmsSmooth(std::span<const float> levels, double step)
{
    assert(levels.size() >= 2);
    double sum = 0;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        const double distance = static_cast<double>(levels[i + 1]) - levels[i] - step;
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(levels.size() - 1));
}

} // namespace orva
