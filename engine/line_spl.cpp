#include "engine/line_spl.h"

#include "engine/parallel.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orva {

namespace {
constexpr std::size_t kReceiversPerBlock = 256;
} // namespace

PerBand<double> bandFactors(const PerBand<BandReference>& levels, const LevelChoice& choice)
{
    const PerBand<float> weights = BandWeights(choice.bands, choice.aWeighted);
    PerBand<double> factors{};
    for (std::size_t b = 0; b < kBands; ++b)
        factors[b] = weights[b] * powerOfLevel(levels[b].field(choice.field));
    return factors;
}

std::vector<Source> radiatingSources(const LineArray& array)
{
    const std::array<float, 96> origins = array.GFAGetOriginPTSandAng(true);
    std::vector<Source> sources;
    for (int i = 0; i < array.boxCount(); ++i) {
        const std::optional<BoxKind> kind = array.kindAt(i);
        const auto at = static_cast<std::size_t>(i);
        if (kind == BoxKind::Straight || kind == BoxKind::Trapezoidal)
            sources.push_back({origins[at], origins[32 + at], origins[64 + at]});
    }
    return sources;
}

std::vector<float> LineSPL(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                           const LineArray& array, const AreaSegment& line,
                           const LevelChoice& choice, int n, int threads)
{
    assert(n >= 1);
    const std::vector<Source> sources = radiatingSources(array);
    const PerBand<double> factors = bandFactors(levels, choice);
    const auto from = static_cast<std::size_t>(choice.bands.from);
    const auto bandCount = static_cast<std::size_t>(choice.bands.count());

    const double step = static_cast<double>(line[5]) / n;
    const double direction = static_cast<double>(line[4]) * kRadiansPerDegree;
    const double dx = step * std::cos(direction);
    const double dy = step * std::sin(direction);

    const auto count = static_cast<std::size_t>(n);
    std::vector<float> result(count);
    const auto calculate = [&](int block) {
        const std::size_t first = static_cast<std::size_t>(block) * kReceiversPerBlock;
        std::vector<Point> receivers(std::min(kReceiversPerBlock, count - first));
        for (std::size_t k = 0; k < receivers.size(); ++k) {
            const auto along = static_cast<double>(first + k);
            receivers[k] = {line[0] + along * dx, line[1] + along * dy};
        }
        std::vector<double> powers(receivers.size() * bandCount);
        kernel.bandPowers(sources, receivers, choice.bands, powers);
        for (std::size_t k = 0; k < receivers.size(); ++k) {
            double power = 0;
            for (std::size_t b = 0; b < bandCount; ++b)
                power += factors[from + b] * powers[k * bandCount + b];
            result[first + k] = static_cast<float>(levelOfPower(power));
        }
    };
    const std::size_t blocks = (count + kReceiversPerBlock - 1) / kReceiversPerBlock;
    runBlocks(static_cast<int>(blocks), threads, {}, calculate);

    const auto [smallest, largest] = std::minmax_element(result.begin(), result.end());
    const std::array extremes = {*largest, *smallest};
    result.insert(result.end(), extremes.begin(), extremes.end());
    return result;
}

AreaSegment fohLine(const Room& room)
{
    const auto [x, y] = room.GFAGetFOH();
    return {x, y, x, y, 0, 0};
}

} // namespace orva
