#pragma once

#include "engine/line_spl.h"
#include "engine/parallel.h"
#include "model/room.h"

#include <optional>
#include <vector>

namespace orva {

/// Cells over the room: column 0 at its left edge, row 0 at its top.
struct MapGrid {
    float CellW = 0; ///< metres
    float CellH = 0;
    float OffX = 0; ///< half the width that whole cells leave uncovered
    float OffY = 0;
    int columns = 0;
    int rows = 0;
    double left = 0; ///< room frame, metres
    double top = 0;

    std::size_t cells() const
    {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }
    /// Centre in the room frame.
    Point CellCentre(int column, int row) const;

    friend bool operator==(const MapGrid&, const MapGrid&) = default;
};

/// Whole cells of the given size (metres, above 0), at least one column and one row. None when they
/// would be more than kMaxMapCells.
std::optional<MapGrid> PrepareMapGrid(const Room& room, float cellW, float cellH);
constexpr double kMaxMapCells = 20e6;

/// Raw levels per band, without the reference of the map type: what does not change while only
/// bands, averaging, weighting or map type do. Kept as powers, so that summing needs no
/// exponentials; levelOfPower() gives dB.
struct RawSplCache {
    PerBand<bool> BandDone{};
    PerBand<std::vector<float>> RawSpl; ///< [row * columns + column] of a band that was begun

    /// No band is done any more; the memory stays for the next ones, whose first touch costs up to
    /// half of their calculation.
    void clear() { BandDone = {}; }
};

/// Adds the bands that are not done yet; `progress` counts rows. False when it stopped: those bands
/// stay not done. The array must have no fault().
bool CalcRawSPL(const LevelKernel& kernel, const LineArray& array, const MapGrid& grid,
                BandSpan bands, int threads, const Progress& progress, RawSplCache& cache);

struct SummedMap {
    std::vector<float>
        levels; ///< dB, [row * columns + column]; minus infinity where nothing radiates
    float max = 0;
    float min = 0;
};

/// Sums the chosen bands, all of them done, as weighted powers; `progress` counts rows. None when
/// it stopped.
std::optional<SummedMap> CalcSummedSPL(const RawSplCache& cache,
                                       const PerBand<BandReference>& levels, const MapGrid& grid,
                                       const LevelChoice& choice, int threads,
                                       const Progress& progress);

/// Percent shown after `done` of `total` rows: 0 after the first, 100 after the last.
int rowPercent(int done, int total);

} // namespace orva
