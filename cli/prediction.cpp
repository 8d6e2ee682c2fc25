#include "cli/prediction.h"

#include "model/contradictions.h"

namespace orva {

namespace {

std::optional<Error> notCalculable(const Workspace& state, const std::string& projectFile)
{
    if (const std::optional<Message> fault = state.project.array.fault())
        return Error{*fault, projectFile};
    return std::nullopt;
}

} // namespace

Result<OpenProject> openForCalculation(const std::string& projectFile)
{
    OpenProject project;
    Result<LoadedProject> loaded = loadProject(projectFile);
    if (!loaded)
        return loaded.error();
    makeCurrent(project, std::move(loaded->project));
    if (const std::optional<Error> error = notCalculable(project, projectFile))
        return *error;
    project.contradictions = contradictions(project.project.array, Language::English);
    for (const std::string& line : project.contradictions)
        project.warnings.push_back(Error{line, projectFile}.text());
    return project;
}

Result<OpenProject> openForPrediction(const std::string& projectFile, const CommonOptions& options,
                                      const PredictionOptions& prediction, const Console& console)
{
    Result<OpenProject> project = openForCalculation(projectFile);
    if (!project)
        return project;
    const Result<SystemDataLoad> load = LoadSystemData(*project, options.dataFolderOf(console));
    if (!load)
        return load.error();
    const auto warnOf = [&](const SpeakerDataLoad& data) {
        if (data.note)
            project->warnings.push_back(data.note->text());
    };
    const std::int16_t system = project->project.array.GIGetArrayType();
    const SpeakerDataLoad& data =
        load->at(static_cast<std::size_t>(isSystem(system) ? system : kCompactSystem));
    if (data.error)
        return *data.error;
    warnOf(data);
    SelectSystem(*project, system);
    UpdateSpeedOfSound(*project, options.temperatureC, prediction.humidityPercent);
    if (options.speakerDataFile.empty())
        return project;
    const Result<SpeakerDataLoad> imported = importSpeakerData(*project, options.speakerDataFile);
    if (!imported)
        return imported.error();
    if (imported->error)
        return *imported->error;
    warnOf(*imported);
    return project;
}

Result<MapGrid> mapGrid(const Room& room, float cellM, const std::string& file)
{
    if (const std::optional<MapGrid> grid = PrepareMapGrid(room, cellM, cellM))
        return *grid;
    return Error{"the map would have more than 20 million cells; choose larger ones", file};
}

} // namespace orva
