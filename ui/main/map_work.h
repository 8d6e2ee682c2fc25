#pragma once

#include "engine/parallel.h"
#include "engine/spl_map.h"

#include <memory>

namespace orva::ui {

/// All that a map is calculated from.
struct MapWork {
    std::shared_ptr<const LevelKernel> kernel;
    LineArray array;
    PerBand<BandReference> levels;
    LevelChoice choice;
    MapGrid grid;

    /// Whether the other's powers are these ones'. Those of few bands are more exact than the same
    /// ones among many: what is shown must not depend on what was shown before.
    bool samePowers(const MapWork& other) const
    {
        return kernel == other.kernel && array == other.array && grid == other.grid &&
               choice.bands == other.choice.bands;
    }
    friend bool operator==(const MapWork&, const MapWork&) = default;
};

/// With what is in `cache` already, on all cores; none when it stopped.
std::optional<SummedMap> mapOf(const MapWork& work, const Progress& progress, RawSplCache& cache);

/// The whole room in cells so many times as large.
MapGrid coarser(const MapGrid& grid, const Room& room, float factor);

} // namespace orva::ui
