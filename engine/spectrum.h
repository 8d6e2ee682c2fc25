#pragma once

#include "engine/line_spl.h"

#include <optional>

namespace orva {

/// The radiating boxes with their positions in the array, from 0; bass boxes count as positions.
struct PlacedSources {
    std::vector<Source> sources;
    std::vector<int> positions;
};
PlacedSources placedSources(const LineArray& array);

/// The box whose sound comes first.
struct NearestBox {
    int position; ///< from 0
    double distanceM;
};
/// None where nothing radiates.
std::optional<NearestBox> nearestBox(const PlacedSources& placed, const Point& point);

/// The kernel's powers at some points, a plane per band.
struct BandPowers {
    BandSpan bands;
    std::vector<float> figures; ///< [(band - bands.from) * points + point]

    std::size_t points() const { return figures.size() / static_cast<std::size_t>(bands.count()); }
    const float* plane(int band) const
    {
        return figures.data() + static_cast<std::size_t>(band - bands.from) * points();
    }
};
/// At least one point.
BandPowers bandPowersAt(const LevelKernel& kernel, std::span<const Source> sources,
                        std::span<const Point> points, BandSpan bands);

/// The level in dB of all its bands together at each point, field and weighting as chosen; minus
/// infinity where nothing radiates. To the bit as levelsAlong() gives it.
std::vector<float> levelsOf(const BandPowers& powers, const PerBand<BandReference>& levels,
                            const LevelChoice& choice);

/// Levels in dB of each band alone, per point: field and weighting as chosen.
using BandLevels = PerBand<std::vector<float>>;
/// Adds those of the bands that were calculated together.
void addBandLevels(const BandPowers& powers, const PerBand<BandReference>& levels,
                   const LevelChoice& choice, BandLevels& result);
/// Calculated band by band, to the bit what levelsAlong() gives for each.
BandLevels singleBandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice);

} // namespace orva
