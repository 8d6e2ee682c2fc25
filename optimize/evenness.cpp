#include "optimize/evenness.h"

#include "engine/area_figures.h"
#include "engine/parallel.h"
#include "engine/spectrum.h"
#include "optimize/measure.h"

#include <algorithm>
#include <cmath>

namespace orva {

std::vector<Point> areaReceivers(const Room& room)
{
    std::vector<Point> all;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const std::vector<Point> own = lineReceivers(room.area(number), kAreaReceivers);
        all.insert(all.end(), own.begin(), own.end());
    }
    return all;
}

std::optional<Evenness> evennessOf(const Hearing& hearing, const LineArray& array)
{
    const BandPowers powers = bandPowersAt(hearing.kernel, radiatingSources(array),
                                           hearing.receivers, hearing.choice.bands);
    return evennessOf(levelsOf(powers, hearing.levels, hearing.choice));
}

std::optional<Evenness> evennessOf(std::span<const float> levels)
{
    const auto [least, most] = std::minmax_element(levels.begin(), levels.end());
    if (!std::isfinite(*least) || !std::isfinite(*most))
        return std::nullopt;
    return Evenness{RmsEven(levels, std::vector<double>(levels.size(), 0.0)),
                    static_cast<double>(*most) - *least};
}

std::vector<JointSteps> jointSteps(const Hearing& hearing, const LineArray& array, int threads)
{
    const std::vector<AngleBounds> bounds = array.IAGetAngleBounds();
    std::vector<JointSteps> steps(bounds.size());
    runBlocks(2 * static_cast<int>(bounds.size()), threads, {}, [&](int block) {
        const auto joint = static_cast<std::size_t>(block / 2);
        const bool up = block % 2 == 1;
        LineArray::Positions angles = array.GIAGetAllAngle();
        std::int16_t& angle = angles[joint + 1];
        angle = static_cast<std::int16_t>(up ? angle + 1 : angle - 1);
        if (angle < bounds[joint][0] || angle > bounds[joint][1])
            return;
        LineArray turned = array;
        turned.GBSetAllAngle(angles);
        turned.GFACalcCOM();
        (up ? steps[joint].up : steps[joint].down) = evennessOf(hearing, turned);
    });
    return steps;
}

} // namespace orva
