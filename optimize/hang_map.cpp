#include "optimize/hang_map.h"

#include "engine/parallel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orva {

namespace {

LineArray hungAt(const LineArray& array, const Point& place)
{
    LineArray hung = array;
    hung.GBSetCradleCoord({static_cast<float>(place.x), static_cast<float>(place.y)});
    return hung;
}

std::optional<Evenness> evennessAt(const Hearing& hearing, const Project& project,
                                   const Point& place)
{
    const LineArray hung = hungAt(project.array, place);
    return fitsIn(project.room, extentOf(project.room, hung)) ? evennessOf(hearing, hung)
                                                              : std::nullopt;
}

} // namespace

std::optional<std::size_t> HangMap::cellAt(const Point& point) const
{
    const double column = std::floor((point.x - grid.left - grid.OffX) / grid.CellW);
    const double row = std::floor((grid.top - grid.OffY - point.y) / grid.CellH);
    if (!(column >= 0 && column < grid.columns && row >= 0 && row < grid.rows))
        return std::nullopt;
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(grid.columns) +
           static_cast<std::size_t>(column);
}

Point HangMap::placeOf(std::size_t cell) const
{
    const auto number = static_cast<int>(cell);
    const Point middle = grid.CellCentre(number % grid.columns, number / grid.columns);
    const auto toCentimetre = [](double metres) { return std::round(metres * 100) / 100; };
    return {toCentimetre(middle.x), toCentimetre(middle.y)};
}

std::optional<HangMap> hangMap(const Hearing& hearing, const Project& project, double rasterM,
                               int threads, const Progress& progress)
{
    const auto width = static_cast<float>(rasterM);
    const std::optional<MapGrid> grid = PrepareMapGrid(project.room, width, width);
    if (!grid)
        return std::nullopt;
    constexpr float kNone = -std::numeric_limits<float>::infinity();
    std::optional<HangMap> map(std::in_place);
    map->grid = *grid;
    map->rms = {std::vector<float>(grid->cells(), kNone), kNone, -kNone};
    map->spread = map->rms.levels;
    const auto columns = static_cast<std::size_t>(grid->columns);
    const bool whole = runBlocks(grid->rows, threads, progress, [&](int row) {
        const std::size_t first = static_cast<std::size_t>(row) * columns;
        for (std::size_t cell = first; cell < first + columns; ++cell)
            if (const auto evenness = evennessAt(hearing, project, map->placeOf(cell))) {
                map->rms.levels[cell] = static_cast<float>(evenness->rms);
                map->spread[cell] = static_cast<float>(evenness->spread);
            }
    });
    if (!whole)
        return std::nullopt;
    for (const float rms : map->rms.levels)
        if (std::isfinite(rms)) {
            map->rms.max = std::max(map->rms.max, rms);
            map->rms.min = std::min(map->rms.min, rms);
        }
    if (!std::isfinite(map->rms.min))
        map->rms.min = kNone;
    return map;
}

std::optional<HangPlace> bestPlace(const Hearing& hearing, const Project& project,
                                   const HangMap& map, const std::function<bool()>& stop)
{
    std::optional<HangPlace> best;
    bool stopped = false;
    const auto consider = [&](const Point& place) {
        stopped = stopped || (stop && stop());
        if (stopped)
            return false;
        const auto evenness = evennessAt(hearing, project, place);
        if (!evenness || (best && evenness->rms >= best->evenness.rms))
            return false;
        best = HangPlace{place, *evenness};
        return true;
    };
    for (std::size_t cell = 0; cell < map.rms.levels.size() && !best; ++cell)
        if (std::isfinite(map.rms.levels[cell]) && map.rms.levels[cell] <= map.rms.min)
            consider(map.placeOf(cell));
    for (int centimetres = 16; best && !stopped && centimetres > 0;) {
        const Point from = best->place;
        const double step = centimetres / 100.0;
        bool better = false;
        for (const double dx : {-step, 0.0, step})
            for (const double dy : {-step, 0.0, step})
                better |= consider({from.x + dx, from.y + dy});
        if (!better)
            centimetres /= 2;
    }
    return stopped ? std::nullopt : best;
}

} // namespace orva
