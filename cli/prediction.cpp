#include "cli/prediction.h"

namespace orva {

namespace {

std::optional<Error> notCalculable(const ApplicationState& state, const std::string& projectFile)
{
    if (const std::optional<std::string> fault = state.gLineArray.fault())
        return Error{*fault, projectFile};
    return std::nullopt;
}

} // namespace

Result<ApplicationState> openForCalculation(const std::string& projectFile)
{
    ApplicationState state;
    if (const auto version = loadProject(state, projectFile); !version)
        return version.error();
    if (const std::optional<Error> error = notCalculable(state, projectFile))
        return *error;
    return state;
}

Result<ApplicationState> openForPrediction(const std::string& projectFile,
                                           const CommonOptions& options, const Console& console)
{
    Result<ApplicationState> state = openForCalculation(projectFile);
    if (!state)
        return state;
    const Result<SystemDataLoad> load = LoadSystemData(
        *state, options.dataFolder.empty() ? console.programFolder / "bin"
                                           : std::filesystem::path(options.dataFolder));
    if (!load)
        return load.error();
    const std::int16_t system = state->gLineArray.GIGetArrayType();
    if (const std::optional<Error>& failed =
            system == kStandardSystem ? load->standard : load->compact)
        return *failed;
    SelectSystem(*state, system);
    UpdateSpeedOfSound(*state, options.temperatureC);
    if (!options.speakerDataFile.empty())
        if (const auto read = importSpeakerData(*state, options.speakerDataFile); !read)
            return read.error();
    return state;
}

} // namespace orva
