#include "app/forms/search_setup.h"

#include "engine/fast_kernel.h"
#include "engine/kernel_tables.h"

#include <algorithm>

namespace orva {

std::optional<JointRange> aimingJoints(const Project& project,
                                       const std::vector<WeightedArea>& areas)
{
    std::optional<JointRange> all;
    for (const WeightedArea& area : areas) {
        const auto aiming = GetAreaSpeakers(project.room, project.array, area.number);
        if (!aiming)
            return std::nullopt;
        all =
            all ? JointRange{std::min(all->first, aiming->first), std::max(all->last, aiming->last)}
                : *aiming;
    }
    return all;
}

LineArray searchedArray(const LineArray& array, const Freedom& freedom)
{
    if (!freedom.pins)
        return array;
    LineArray pinned = array;
    pinned.GBSetAngleOrPin(true);
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[0] = 0;
    return withAngles(pinned, angles);
}

CandidateSet searchedSet(const LineArray& array, JointRange joints, const SearchChoice& choice)
{
    return CandidateSet(searchedArray(array, choice.freedom),
                        choice.allJoints ? allJoints(array) : joints, choice.neighbours,
                        choice.freedom);
}

std::optional<std::vector<float>> heightsBetween(double from, double to, double step)
{
    constexpr double kMostHeights = 1e6;
    if (!(step > 0) || !(to >= from) || !((to - from) / step <= kMostHeights))
        return std::nullopt;
    std::vector<float> heights;
    for (int k = 0; from + k * step <= to + step / 1e6; ++k)
        heights.push_back(static_cast<float>(from + k * step));
    return heights;
}

SearchTask searchTask(const ApplicationState& state, const Project& project,
                      const SearchChoice& choice)
{
    SearchTask task;
    task.array = searchedArray(project.array, choice.freedom);
    task.area = project.room.area(choice.areas.front().number);
    task.weight = choice.areas.front().weight;
    task.target = choice.target.value_or(FitLineTarget::wholeArea(task.area));
    for (std::size_t i = 1; i < choice.areas.size(); ++i) {
        const Segment area = project.room.area(choice.areas[i].number);
        task.otherAreas.push_back({area, FitLineTarget::wholeArea(area), choice.areas[i].weight});
    }
    task.measure = choice.measure;
    task.perDoublingDb = choice.perDoublingDb;
    task.points = choice.points;
    task.choice = choice.levels;
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
