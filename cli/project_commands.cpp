#include "app/state/application_state.h"
#include "cli/json.h"
#include "cli/options.h"

#include <memory>

namespace orva {

namespace {

struct NewOptions {
    CommonOptions common;
    std::string file;
    std::string system = "standard";
};

std::vector<std::string> systemNames()
{
    std::vector<std::string> names;
    for (const SystemRecord* system : allSystems())
        names.emplace_back(system->name);
    return names;
}

Result<Done> writeNew(const NewOptions& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.file}, {}); !apart)
        return apart;
    const std::vector<std::string> names = systemNames();
    const auto named = std::find(names.begin(), names.end(), options.system);
    const Project project = newProject(static_cast<std::int16_t>(named - names.begin()));
    PendingFiles files;
    if (auto added = files.add(options.file, projectBytes(project)); !added)
        return added;
    return deliver(console, "", files);
}

std::string withoutTrailingBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

Json jsonOf(const LineArray& array)
{
    return {{"NumGerade", array.GIGetNumGerade()},
            {"NumSchräg", array.GIGetNumSchräg()},
            {"NumBass", array.GIGetNumBass()},
            {"NumSpeakers", array.GIGetNumSpeakers()},
            {"ArrayType", array.GIGetArrayType()},
            {"AllType", array.GIAGetAllType()},
            {"AllAngle", array.GIAGetAllAngle()},
            {"CradleCoord", jsonNumbers(array.GFAGetCradleCoord())},
            {"BassBoxCoord", jsonNumbers(array.GFAGetBassBoxCoord())},
            {"BassBox", array.GBGetBassBox()},
            {"Mounting", array.GBGetMounting()},
            {"AngleOrPin", array.GBGetAngleOrPin()}};
}

Json jsonOf(const Room& room)
{
    return {{"NumAreas", room.GIGetNumAreas()},
            {"RoomDims", jsonNumbers(room.GFAGetRoomDims())},
            {"AudienceArea1", jsonNumbers(room.GFAGetAudienceArea1())},
            {"AudienceArea2", jsonNumbers(room.GFAGetAudienceArea2())},
            {"AudienceArea3", jsonNumbers(room.GFAGetAudienceArea3())},
            {"PointOfRef", jsonNumbers(room.GFAGetPointOfRef())},
            {"FOH", jsonNumbers(room.GFAGetFOH())},
            {"ProjectName", withoutTrailingBlanks(room.GSGetProjectName())},
            {"AuthorName", withoutTrailingBlanks(room.GSGetAuthorName())},
            {"Comment", withoutTrailingBlanks(room.GSGetComment())}};
}

Result<Done> show(const ProjectOptions& options, const Console& console)
{
    const Result<LoadedProject> loaded = loadProject(options.file);
    if (!loaded)
        return loaded.error();
    const Project& project = loaded->project;
    const Json subArray = {{"positions", jsonNumbers(project.subArray.SubPos)},
                           {"openingAngle", jsonNumber(project.subArray.openingAngleDeg)}};
    PendingFiles files;
    const Json result = {{"version", loaded->version},
                         {"array", jsonOf(project.array)},
                         {"room", jsonOf(project.room)},
                         {"subArray", subArray}};
    return deliver(console, jsonText(result), files);
}

} // namespace

void addNewCommand(CLI::App& program, Work& work)
{
    CLI::App* command =
        program.add_subcommand("new", "write a project with a new project's defaults");
    const auto options = std::make_shared<NewOptions>();
    command->add_option("OUT.lad", options->file, "the project file to write")
        ->required()
        ->check(fileName())
        ->type_name("");
    command->add_option("--system", options->system, "which loudspeaker system")
        ->check(CLI::IsMember(systemNames()))
        ->type_name("SYSTEM")
        ->capture_default_str();
    addCommonOptions(*command, options->common);
    addExample(*command, "venue.lad --system compact");
    command->callback([options, &work] {
        work = [options](const Console& console) { return writeNew(*options, console); };
    });
}

void addShowCommand(CLI::App& program, Work& work)
{
    addProjectCommand(program, work, "show", "print the stored fields as JSON", show);
}

} // namespace orva
