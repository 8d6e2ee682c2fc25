#include "app/forms/search_setup.h"

#include "engine/fast_kernel.h"
#include "engine/kernel_tables.h"

namespace orva {

SearchTask searchTask(const ApplicationState& state, const Project& project, int area,
                      const FitLineTarget& target, Measure measure, int points,
                      const LevelChoice& choice)
{
    SearchTask task;
    task.array = project.array;
    task.area = project.room.area(area);
    task.target = target;
    task.measure = measure;
    task.points = points;
    task.choice = choice;
    task.speakerData = state.speakerData;
    task.air = state.air;
    return task;
}

std::shared_ptr<const SearchTask> withKernel(SearchTask task)
{
    // Data too steep for the finer tables are searched with those for what is shown.
    TablePrecision precision = kSearchPrecision;
    auto directivity = DirectivityTable::make(task.speakerData.directivity, precision);
    if (!directivity) {
        precision = kShownPrecision;
        directivity = DirectivityTable::make(task.speakerData.directivity, precision);
    }
    task.amplitudeError = precision.amplitudeError;
    task.kernel = std::make_shared<FastKernel>(
        directivity, RadialTable::make(task.air, precision),
        std::make_unique<LiteralKernel>(task.speakerData.directivity, task.air));
    return std::make_shared<SearchTask>(std::move(task));
}

LineArray withConfiguration(const LineArray& array, const Configuration& configuration)
{
    LineArray hung = array;
    if (configuration.heightM)
        hung.GBSetCradleCoord({hung.GFAGetCradleCoord()[0], *configuration.heightM});
    return withAngles(hung, configuration.angles);
}

LineArray withAngles(const LineArray& array, const LineArray::Positions& angles)
{
    LineArray changed = array;
    changed.GBSetAllAngle(angles);
    changed.GFACalcCOM();
    return changed;
}

} // namespace orva
