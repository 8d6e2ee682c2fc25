#include "main/map_work.h"

namespace orva::ui {

std::optional<SummedMap> mapOf(const MapWork& work, const Progress& progress, RawSplCache& cache)
{
    if (!CalcRawSPL(*work.kernel, work.array, work.grid, work.choice.bands, coreCount(), progress,
                    cache))
        return std::nullopt;
    return CalcSummedSPL(cache, work.levels, work.grid, work.choice, coreCount(), progress);
}

MapGrid coarser(const MapGrid& grid, const Room& room, float factor)
{
    return PrepareMapGrid(room, grid.CellW * factor, grid.CellH * factor).value_or(grid);
}

} // namespace orva::ui
