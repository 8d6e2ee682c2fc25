#pragma once

#include "app/state/application_state.h"
#include "cli/options.h"
#include "engine/spl_map.h"

namespace orva {

/// A state with a project, and what there is to be said about what was read.
struct OpenProject : Workspace {
    std::vector<std::string> contradictions; ///< of the array, for the result
    std::vector<std::string> warnings;       ///< all, with the files they are about
};

/// A state with the project loaded and an array that can be calculated; else an error.
Result<OpenProject> openForCalculation(const std::string& projectFile);

/// The same with loudspeaker data and air as the options say, ready to predict. An error also when
/// the data of the project's system is not whole.
Result<OpenProject> openForPrediction(const std::string& projectFile, const CommonOptions& options,
                                      const PredictionOptions& prediction, const Console& console);

/// The cells of a map of the room of a project's file; an error where they are too many.
Result<MapGrid> mapGrid(const Room& room, float cellM, const std::string& file);

} // namespace orva
