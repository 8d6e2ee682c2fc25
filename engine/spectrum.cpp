#include "engine/spectrum.h"

#include "engine/levels.h"

#include <cmath>

namespace orva {

PlacedSources placedSources(const LineArray& array)
{
    PlacedSources placed{radiatingSources(array), {}};
    for (int position = 0; position < array.boxCount(); ++position)
        if (radiates(array, position))
            placed.positions.push_back(position);
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

BandPowers bandPowersAt(const LevelKernel& kernel, std::span<const Source> sources,
                        std::span<const Point> points, BandSpan bands)
{
    BandPowers powers{bands, {}};
    powers.figures.resize(static_cast<std::size_t>(bands.count()) * points.size());
    std::vector<float*> planes;
    for (std::size_t at = 0; at < powers.figures.size(); at += points.size())
        planes.push_back(powers.figures.data() + at);
    kernel.bandPowers(sources, points, bands, planes);
    return powers;
}

std::vector<float> levelsOf(const BandPowers& powers, const PerBand<BandReference>& levels,
                            const LevelChoice& choice)
{
    std::vector<const float*> planes;
    for (int band = powers.bands.from; band <= powers.bands.to; ++band)
        planes.push_back(powers.plane(band));
    std::vector<float> result(powers.points());
    weightedLevels(planes, bandFactors(levels, {powers.bands, choice.field, choice.aWeighted}),
                   result);
    return result;
}

void addBandLevels(const BandPowers& powers, const PerBand<BandReference>& levels,
                   const LevelChoice& choice, BandLevels& result)
{
    for (int band = powers.bands.from; band <= powers.bands.to; ++band) {
        const std::vector<float> factor =
            bandFactors(levels, {{band, band}, choice.field, choice.aWeighted});
        std::vector<float>& alone = result[static_cast<std::size_t>(band)];
        alone.resize(powers.points());
        const float* const plane = powers.plane(band);
        weightedLevels({&plane, 1}, factor, alone);
    }
}

BandLevels singleBandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice)
{
    BandLevels result;
    for (int band = 0; band < kBands; ++band)
        addBandLevels(bandPowersAt(kernel, sources, points, {band, band}), levels, choice, result);
    return result;
}

} // namespace orva
