#pragma once

#include "app/state/application_state.h"
#include "optimize/evaluator.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orva {

/// An audience area by its number, from 1, and what its measure counts among others; above 0.
struct WeightedArea {
    int number = 1;
    double weight = 1;
};

/// What is searched.
struct SearchChoice {
    std::vector<WeightedArea> areas{{}}; ///< one at least
    /// Along the first area; without it whole areas are measured.
    std::optional<FitLineTarget> target{};
    Measure measure = Measure::SmoothArea;
    double perDoublingDb = 0; ///< Even: wanted change with the distance
    int points = 200;         ///< along each area; 2 or more
    bool allJoints = false;   ///< not only those between boxes that aim at the areas
    bool neighbours = false;  ///< only angles next to the present ones
    Freedom freedom{};
    LevelChoice levels{};
};

/// The joints from the first to the last one between boxes that aim at the areas; none where no box
/// aims at one of them.
std::optional<JointRange> aimingJoints(const Project& project,
                                       const std::vector<WeightedArea>& areas);
/// The array as it is searched: where the pin is free, in pin mode. It must be flown then.
LineArray searchedArray(const LineArray& array, const Freedom& freedom);
/// The configurations: of `joints`, or of all where the choice says so.
CandidateSet searchedSet(const LineArray& array, JointRange joints, const SearchChoice& choice);
/// The heights from one to another in metres, as 32-bit floats; none where that is not sound.
std::optional<std::vector<float>> heightsBetween(double from, double to, double step);

/// The search in a project, whose array must have no fault(). A private copy of everything: later
/// edits do not touch it. Still without its kernel.
SearchTask searchTask(const ApplicationState& state, const Project& project,
                      const SearchChoice& choice);

/// The same with its kernel, whose tables take a tenth of a second.
std::shared_ptr<const SearchTask> withKernel(SearchTask task);

/// The array with other angles, its geometry calculated.
LineArray withAngles(const LineArray& array, const LineArray::Positions& angles);
/// The same with all that a search varied.
LineArray withConfiguration(const LineArray& array, const Configuration& configuration);

} // namespace orva
