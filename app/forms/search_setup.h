#pragma once

#include "app/state/application_state.h"
#include "optimize/evaluator.h"

namespace orva {

/// The search along an audience area (1 to the number of areas) for the project's array, which must
/// have no fault(). A private copy of everything: later edits do not touch it. Still without its
/// kernel.
SearchTask searchTask(const ApplicationState& state, const Project& project, int area,
                      const FitLineTarget& target, Measure measure, int points,
                      const LevelChoice& choice);

/// The same with its kernel, whose tables take a tenth of a second.
std::shared_ptr<const SearchTask> withKernel(SearchTask task);

/// The array with other angles, its geometry calculated.
LineArray withAngles(const LineArray& array, const LineArray::Positions& angles);
/// The same with all that a search varied.
LineArray withConfiguration(const LineArray& array, const Configuration& configuration);

} // namespace orva
