#include "app/search_setup.h"

#include "engine/fast_kernel.h"
#include "engine/kernel_tables.h"

namespace orva {

std::shared_ptr<const SearchTask> searchTask(ApplicationState& state, int area,
                                             const FitLineTarget& target, Measure measure,
                                             int points, const LevelChoice& choice)
{
    auto task = std::make_shared<SearchTask>();
    task->array = state.gLineArray;
    task->area = *state.gRoom.GFAGetAudienceAreaSelect(area);
    task->target = target;
    task->measure = measure;
    task->points = points;
    task->choice = choice;
    task->speakerData = state.speakerData;
    task->air = state.air;

    // Data too steep for the finer tables are searched with those for what is shown.
    TablePrecision precision = kSearchPrecision;
    auto directivity = DirectivityTable::make(state.speakerData.directivity, precision);
    if (!directivity) {
        precision = kShownPrecision;
        directivity = DirectivityTable::make(state.speakerData.directivity, precision);
    }
    task->amplitudeError = precision.amplitudeError;
    task->kernel = std::make_shared<FastKernel>(
        directivity, RadialTable::make(state.air, precision),
        std::make_unique<LiteralKernel>(state.speakerData.directivity, state.air));
    return task;
}

LineArray withAngles(const LineArray& array, const LineArray::Positions& angles)
{
    LineArray changed = array;
    changed.GBSetAllAngle(angles);
    changed.GFACalcCOM();
    return changed;
}

} // namespace orva
