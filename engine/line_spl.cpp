#include "engine/line_spl.h"

#include "engine/levels.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orva {

namespace {
constexpr std::size_t kReceiversPerBlock = 256;
} // namespace

LevelChoice chosenLevels(LevelField field, Averaging averaging, int band, bool aWeighted)
{
    if (field != LevelField::Relative)
        averaging = Averaging::Broadband;
    return {BandRange(averaging, band), field, aWeighted};
}

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

bool radiates(const LineArray& array, int position)
{
    const std::optional<BoxKind> kind = array.kindAt(position);
    return kind == BoxKind::Straight || kind == BoxKind::Trapezoidal;
}

std::vector<Source> radiatingSources(const LineArray& array)
{
    std::vector<Source> sources;
    int position = 0;
    for (const LineArray::BoxAxis& axis : array.axes()) {
        if (radiates(array, position++))
            sources.push_back({axis.from.x, axis.from.y, axis.angleDeg});
    }
    return sources;
}

std::vector<Point> lineReceivers(const Segment& line, int n)
{
    assert(n >= 1);
    const double step = line.lengthM / n;
    const double direction = line.angleDeg * kRadiansPerDegree;
    const double dx = step * std::cos(direction);
    const double dy = step * std::sin(direction);
    std::vector<Point> receivers(static_cast<std::size_t>(n));
    for (std::size_t k = 0; k < receivers.size(); ++k)
        receivers[k] = {line.start.x + static_cast<double>(k) * dx,
                        line.start.y + static_cast<double>(k) * dy};
    return receivers;
}

namespace {

std::optional<std::vector<float>> levelsInBlocks(const LevelKernel& kernel,
                                                 const PerBand<BandReference>& levels,
                                                 const LineArray& array, const Segment& line,
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
                           const LineArray& array, const Segment& line, const LevelChoice& choice,
                           int n, int threads)
{
    std::vector<float> result =
        *levelsInBlocks(kernel, levels, array, line, choice, n, threads, {});
    const auto [smallest, largest] = std::minmax_element(result.begin(), result.end());
    const std::array extremes = {*largest, *smallest};
    result.insert(result.end(), extremes.begin(), extremes.end());
    return result;
}

LineLevels levelsAlong(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                       const LineArray& array, const Segment& line, const LevelChoice& choice,
                       int n, int threads)
{
    LineLevels result{LineSPL(kernel, levels, array, line, choice, n, threads), 0, 0};
    const auto end = result.levels.begin() + n;
    result.largest = end[0];
    result.smallest = end[1];
    result.levels.erase(end, result.levels.end());
    return result;
}

std::optional<std::vector<float>>
lineLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels, const LineArray& array,
           const Segment& line, const LevelChoice& choice, int n, const Progress& progress)
{
    return levelsInBlocks(kernel, levels, array, line, choice, n, 1, progress);
}

Segment fohLine(const Room& room)
{
    return {room.foh(), room.foh(), 0, 0};
}

} // namespace orva
