#include "engine/spectrum.h"

#include "engine/levels.h"

#include <cmath>

namespace orva {

PlacedSources placedSources(const LineArray& array)
{
    PlacedSources placed{radiatingSources(array), {}};
    for (int position = 0; position < array.boxCount(); ++position) {
        const std::optional<BoxKind> kind = array.kindAt(position);
        if (kind == BoxKind::Straight || kind == BoxKind::Trapezoidal)
            placed.positions.push_back(position);
    }
    return placed;
}

std::optional<NearestBox> nearestBox(const PlacedSources& placed, const Point& point)
{
    std::optional<NearestBox> nearest;
    for (std::size_t i = 0; i < placed.sources.size(); ++i) {
        const double distance =
            std::hypot(placed.sources[i].x - point.x, placed.sources[i].y - point.y);
        if (!nearest || distance < nearest->distanceM)
            nearest = NearestBox{placed.positions[i], distance};
    }
    return nearest;
}

namespace {

/// The powers of the chosen bands, a plane each.
struct Powers {
    std::vector<float> figures;
    std::vector<float*> planes;
};
Powers powersOf(const LevelKernel& kernel, std::span<const Source> sources,
                std::span<const Point> points, BandSpan bands)
{
    Powers powers;
    powers.figures.resize(static_cast<std::size_t>(bands.count()) * points.size());
    for (std::size_t at = 0; at < powers.figures.size(); at += points.size())
        powers.planes.push_back(powers.figures.data() + at);
    kernel.bandPowers(sources, points, bands, powers.planes);
    return powers;
}

/// The levels of the chosen bands, each alone, from one run.
void addBandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                   std::span<const Source> sources, std::span<const Point> points,
                   const LevelChoice& choice, BandLevels& result)
{
    const std::vector<float> factors = bandFactors(levels, choice);
    const Powers powers = powersOf(kernel, sources, points, choice.bands);
    for (std::size_t band = 0; band < factors.size(); ++band) {
        std::vector<float>& alone = result[static_cast<std::size_t>(choice.bands.from) + band];
        alone.resize(points.size());
        const float* const plane = powers.planes[band];
        weightedLevels({&plane, 1}, {&factors[band], 1}, alone);
    }
}

} // namespace

BandLevels bandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                      std::span<const Source> sources, std::span<const Point> points,
                      const LevelChoice& choice)
{
    BandLevels result;
    addBandLevels(kernel, levels, sources, points,
                  {{0, kBands - 1}, choice.field, choice.aWeighted}, result);
    return result;
}

BandLevels singleBandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice)
{
    BandLevels result;
    for (int band = 0; band < kBands; ++band)
        addBandLevels(kernel, levels, sources, points,
                      {{band, band}, choice.field, choice.aWeighted}, result);
    return result;
}

std::vector<float> levelsAt(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice)
{
    const std::vector<float> factors = bandFactors(levels, choice);
    const Powers powers = powersOf(kernel, sources, points, choice.bands);
    std::vector<float> result(points.size());
    weightedLevels({powers.planes.data(), powers.planes.size()}, factors, result);
    return result;
}

} // namespace orva
