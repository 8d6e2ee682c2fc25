#pragma once

#include "app/application_state.h"
#include "cli/options.h"

namespace orva {

/// A state with the project loaded and an array that can be calculated; else an error.
Result<ApplicationState> openForCalculation(const std::string& projectFile);

/// The same with loudspeaker data and air as the options say, ready to predict. An error also when
/// the data of the project's system is not whole.
Result<ApplicationState> openForPrediction(const std::string& projectFile,
                                           const CommonOptions& options, const Console& console);

} // namespace orva
