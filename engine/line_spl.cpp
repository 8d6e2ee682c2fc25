#include "engine/line_spl.h"

#include "engine/levels.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orva {

namespace {
constexpr std::size_t kReceiversPerBlock = 256;
} // namespace

std::vector<float> bandFactors(const PerBand<BandReference>& levels, const LevelChoice& choice)
{
    const PerBand<float> weights = BandWeights(choice.bands, choice.aWeighted);
    std::vector<float> factors;
    for (int b = choice.bands.from; b <= choice.bands.to; ++b) {
        const auto band = static_cast<std::size_t>(b);
        const double reference = powerOfLevel(levels[band].field(choice.field));
        factors.push_back(static_cast<float>(weights[band] * reference));
    }
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

std::vector<Point> lineReceivers(const AreaSegment& line, int n)
{
    assert(n >= 1);
    const double step = static_cast<double>(line[5]) / n;
    const double direction = static_cast<double>(line[4]) * kRadiansPerDegree;
    const double dx = step * std::cos(direction);
    const double dy = step * std::sin(direction);
    std::vector<Point> receivers(static_cast<std::size_t>(n));
    for (std::size_t k = 0; k < receivers.size(); ++k)
        receivers[k] = {line[0] + static_cast<double>(k) * dx,
                        line[1] + static_cast<double>(k) * dy};
    return receivers;
}

namespace {

std::optional<std::vector<float>> levelsInBlocks(const LevelKernel& kernel,
                                                 const PerBand<BandReference>& levels,
                                                 const LineArray& array, const AreaSegment& line,
                                                 const LevelChoice& choice, int n, int threads,
                                                 const Progress& progress)
{
    const std::vector<Source> sources = radiatingSources(array);
    const std::vector<float> factors = bandFactors(levels, choice);
    const std::vector<Point> points = lineReceivers(line, n);
    const auto count = static_cast<std::size_t>(n);
    std::vector<float> result(count);
    const auto calculate = [&](int block) {
        const std::size_t first = static_cast<std::size_t>(block) * kReceiversPerBlock;
        const auto receivers =
            std::span(points).subspan(first, std::min(kReceiversPerBlock, count - first));
        std::array<std::array<float, kReceiversPerBlock>, kBands> powers;
        std::array<float*, kBands> planes;
        std::transform(powers.begin(), powers.end(), planes.begin(),
                       [](auto& plane) { return plane.data(); });
        const std::span used(planes.data(), factors.size());
        kernel.bandPowers(sources, receivers, choice.bands, used);
        weightedLevels({used.data(), used.size()}, factors,
                       std::span(result).subspan(first, receivers.size()));
    };
    const std::size_t blocks = (count + kReceiversPerBlock - 1) / kReceiversPerBlock;
    if (!runBlocks(static_cast<int>(blocks), threads, progress, calculate))
        return std::nullopt;
    return result;
}

} // namespace

std::vector<float> LineSPL(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                           const LineArray& array, const AreaSegment& line,
                           const LevelChoice& choice, int n, int threads)
{
    std::vector<float> result =
        *levelsInBlocks(kernel, levels, array, line, choice, n, threads, {});
    const auto [smallest, largest] = std::minmax_element(result.begin(), result.end());
    const std::array extremes = {*largest, *smallest};
    result.insert(result.end(), extremes.begin(), extremes.end());
    return result;
}

std::optional<std::vector<float>>
lineLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels, const LineArray& array,
           const AreaSegment& line, const LevelChoice& choice, int n, const Progress& progress)
{
    return levelsInBlocks(kernel, levels, array, line, choice, n, 1, progress);
}

AreaSegment fohLine(const Room& room)
{
    const auto [x, y] = room.GFAGetFOH();
    return {x, y, x, y, 0, 0};
}

} // namespace orva
