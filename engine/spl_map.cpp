#include "engine/spl_map.h"

#include "engine/levels.h"
#include "lang/number_text.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <functional>
#include <span>

namespace orva {

namespace {

/// Receivers that go to the kernel at once; their points stand on the stack.
constexpr std::size_t kCellsPerCall = 256;

/// Whole cells in a length; rounded to 5 decimals first, since a size such as 0.3 m has no exact
/// binary value. At least 1.
double wholeCells(float length, float cell)
{
    const double ratio = static_cast<double>(length) / cell;
    return std::max(1.0, std::trunc(roundedTo(ratio, 5)));
}

/// The figure that comes before all others. In lanes that the compiler puts into vectors.
template<typename Before>
float extreme(std::span<const float> figures, Before before)
{
    constexpr std::size_t kLanes = 16;
    std::array<float, kLanes> first;
    first.fill(figures.front());
    std::size_t i = 0;
    for (; i + kLanes <= figures.size(); i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            first[lane] = before(figures[i + lane], first[lane]) ? figures[i + lane] : first[lane];
    for (; i < figures.size(); ++i)
        first[0] = before(figures[i], first[0]) ? figures[i] : first[0];
    return *std::min_element(first.begin(), first.end(), before);
}

} // namespace

Point MapGrid::CellCentre(int column, int row) const
{
    return {left + OffX + (column + 0.5) * CellW, top - OffY - (row + 0.5) * CellH};
}

std::optional<MapGrid> PrepareMapGrid(const Room& room, float cellW, float cellH)
{
    const auto [width, height] = room.GFAGetRoomDims();
    const double columns = wholeCells(width, cellW);
    const double rows = wholeCells(height, cellH);
    if (columns * rows > kMaxMapCells)
        return std::nullopt;

    const auto [refX, refY] = room.GFAGetPointOfRef();
    const auto margin = [](float length, float cell, double count) {
        return static_cast<float>((length - cell * count) / 2);
    };
    return MapGrid{.CellW = cellW,
                   .CellH = cellH,
                   .OffX = margin(width, cellW, columns),
                   .OffY = margin(height, cellH, rows),
                   .columns = static_cast<int>(columns),
                   .rows = static_cast<int>(rows),
                   .left = -static_cast<double>(refX),
                   .top = static_cast<double>(height) - refY};
}

namespace {
constexpr std::size_t kMostSpare = 8;
} // namespace

bool CalcRawSPL(const LevelKernel& kernel, const LineArray& array, const MapGrid& grid,
                BandSpan bands, int threads, const Progress& progress, RawSplCache& cache)
{
    const std::vector<Source> sources = radiatingSources(array);
    const auto columns = static_cast<std::size_t>(grid.columns);

    // Neighbouring bands that are missing go to the kernel together.
    std::vector<BandSpan> missing;
    for (int b = bands.from; b <= bands.to; ++b) {
        if (cache.BandDone[static_cast<std::size_t>(b)])
            continue;
        std::vector<float>& plane = cache.RawSpl[static_cast<std::size_t>(b)];
        if (plane.capacity() > kMostSpare * grid.cells())
            plane = {}; // of a far larger map
        plane.resize(grid.cells());
        if (!missing.empty() && missing.back().to == b - 1)
            missing.back().to = b;
        else
            missing.push_back({b, b});
    }
    if (missing.empty())
        return true;

    const auto calculateRow = [&](int row) {
        std::array<Point, kCellsPerCall> points;
        std::array<float*, kBands> planes;
        for (std::size_t c = 0; c < columns; c += kCellsPerCall) {
            const std::span receivers(points.data(), std::min(kCellsPerCall, columns - c));
            for (std::size_t i = 0; i < receivers.size(); ++i)
                receivers[i] = grid.CellCentre(static_cast<int>(c + i), row);
            const std::size_t first = static_cast<std::size_t>(row) * columns + c;
            for (const BandSpan span : missing) {
                const std::span used(planes.data(), static_cast<std::size_t>(span.count()));
                for (std::size_t b = 0; b < used.size(); ++b)
                    used[b] = &cache.RawSpl[static_cast<std::size_t>(span.from) + b][first];
                kernel.bandPowers(sources, receivers, span, used);
            }
        }
    };
    if (!runBlocks(grid.rows, threads, progress, calculateRow))
        return false;
    for (int b = bands.from; b <= bands.to; ++b)
        cache.BandDone[static_cast<std::size_t>(b)] = true;
    return true;
}

std::optional<SummedMap> CalcSummedSPL(const RawSplCache& cache,
                                       const PerBand<BandReference>& levels, const MapGrid& grid,
                                       const LevelChoice& choice, int threads,
                                       const Progress& progress)
{
    const std::vector<float> factors = bandFactors(levels, choice);
    const auto columns = static_cast<std::size_t>(grid.columns);
    SummedMap map;
    map.levels.resize(grid.cells());
    const auto sumRow = [&](int row) {
        const std::size_t first = static_cast<std::size_t>(row) * columns;
        std::array<const float*, kBands> planes;
        for (std::size_t b = 0; b < factors.size(); ++b) {
            const std::size_t band = static_cast<std::size_t>(choice.bands.from) + b;
            assert(cache.BandDone[band]);
            planes[b] = &cache.RawSpl[band][first];
        }
        weightedLevels({planes.data(), factors.size()}, factors,
                       std::span(map.levels).subspan(first, columns));
    };
    if (!runBlocks(grid.rows, threads, progress, sumRow))
        return std::nullopt;
    map.min = extreme(map.levels, std::less());
    map.max = extreme(map.levels, std::greater());
    return map;
}

int rowPercent(int done, int total)
{
    return total <= 1 ? 100 : (done - 1) * 100 / (total - 1);
}

} // namespace orva
