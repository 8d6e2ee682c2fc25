#include "cli/json.h"
#include "cli/prediction.h"
#include "document/setup_edit.h"
#include "engine/auto_aim.h"
#include "engine/sub_array_figures.h"
#include "lang/string_table.h"

#include <memory>

namespace orva {

namespace {

struct AimOptions : ProjectOptions {
    std::string outFile;
};

Result<Done> aim(const AimOptions& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {}); !apart)
        return apart;
    Result<OpenProject> state = openForCalculation(options.file);
    if (!state)
        return state.error();
    const std::optional<double> angle = autoAim(state->project.room, state->project.array);
    if (!angle) {
        return Error{std::string(MlGetString(options.common.text().language, Text::NoAreaToAimAt)),
                     options.file};
    }
    DocumentState aimed = documentOf(state->project);
    aimFirstBox(aimed, *angle, false);
    state->project = aimed.project;
    PendingFiles files;
    if (!options.outFile.empty())
        if (auto added = files.add(options.outFile, projectBytes(state->project)); !added)
            return added;
    Json result = {{"angle", jsonNumber(static_cast<float>(*angle))},
                   {"pin", state->project.array.GIPinPoint()}};
    addWarnings(result, state->contradictions);
    return deliver(console, jsonText(result), files, state->warnings);
}

Json jsonOf(const std::array<double, 10>& figures)
{
    Json list = Json::array();
    for (const double figure : figures)
        list.push_back(jsonNumber(static_cast<float>(figure)));
    return list;
}

struct SubArrayOptions : ProjectOptions {
    FigureFiles figures;
};

Result<Done> printSubArray(const SubArrayOptions& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common,
                                  {options.figures.csv, options.figures.json}, {options.file});
        !apart)
        return apart;
    const Result<LoadedProject> loaded = loadProject(options.file);
    if (!loaded)
        return loaded.error();
    const Air air = airAt(options.common.temperatureC);
    const SubArrayFigures figures = subArrayFigures(loaded->project.subArray, air.SpeedOfSound);
    PendingFiles files;
    const TextOptions text = options.common.text();
    const auto table = [&] {
        return subArrayTable(loaded->project.subArray, air.SpeedOfSound, text);
    };
    if (auto added = addFigures(options.figures, table, text, files); !added)
        return added;
    const Json result = {{"virtualDistance", jsonOf(figures.virtualDistance)},
                         {"delay", jsonOf(figures.delay)}};
    return deliver(console, jsonText(result), files);
}

} // namespace

void addAimCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand("aim", "aim the array at the audience");
    const auto options = std::make_shared<AimOptions>();
    command->add_option("--out", options->outFile, "save the aimed project")
        ->check(fileName())
        ->type_name("FILE");
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --out aimed.lad");
    command->callback([options, &work] {
        work = [options](const Console& console) { return aim(*options, console); };
    });
}

void addSubArrayCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "subarray", "print virtual distances (metres) and delays (ms) of the sub array as JSON");
    const auto options = std::make_shared<SubArrayOptions>();
    addFigureOptions(*command, options->figures, "positions, distances and delays");
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --csv subs.csv");
    command->callback([options, &work] {
        work = [options](const Console& console) { return printSubArray(*options, console); };
    });
}

} // namespace orva
