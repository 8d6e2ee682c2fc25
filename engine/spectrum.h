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

/// Levels in dB of each band alone, per point: field and weighting as chosen, whatever its bands.
/// Minus infinity where nothing radiates.
using BandLevels = PerBand<std::vector<float>>;
/// From one run over all bands, as the map has them.
BandLevels bandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                      std::span<const Source> sources, std::span<const Point> points,
                      const LevelChoice& choice);
/// Band by band, to the bit what levelsAlong() gives for each.
BandLevels singleBandLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice);
/// The level of the chosen bands together, as levelsAlong() gives it.
std::vector<float> levelsAt(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                            std::span<const Source> sources, std::span<const Point> points,
                            const LevelChoice& choice);

} // namespace orva
