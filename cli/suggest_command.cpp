#include "app/forms/prediction.h"
#include "app/forms/suggestions.h"
#include "cli/json.h"
#include "cli/prediction.h"
#include "cli/progress_bar.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    std::uint64_t budget = Suggesting::kBudget;
    std::string outFile;
};

Json jsonOf(const Suggestion& suggestion, OpenProject& state, const Options& options)
{
    const LineArray& array = suggestion.array;
    Prediction prediction(state.levelKernel(), state.speakerData.BandLevel, array,
                          state.air.SpeedOfSound);
    Json areas = Json::array();
    for (int number = 1; number <= state.project.room.GIGetNumAreas(); ++number) {
        const auto figures =
            prediction.figuresOf(state.project.room.area(number), options.prediction.choice());
        const auto figure = [&](double AreaFigures::*which) {
            return figures ? jsonNumber(static_cast<float>((*figures).*which)) : Json();
        };
        areas.push_back({{"area", number},
                         {"mean", figure(&AreaFigures::mean)},
                         {"spread", figure(&AreaFigures::spread)}});
    }
    return {{"boxes", array.boxCount()},
            {"types", array.GIAGetAllType()},
            {"height", jsonNumber(array.GFAGetCradleCoord()[1])},
            {"pin", array.GIPinPoint()},
            {"angles", array.GIAGetAllAngle()},
            {"even", jsonNumber(static_cast<float>(suggestion.evenDb))},
            {"foh", jsonNumber(suggestion.fohDb)},
            {"weight", jsonNumber(static_cast<float>(suggestion.weightKg))},
            {"areas", areas}};
}

Result<Done> suggest(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {}); !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    Suggesting suggesting(*state, state->project, options.prediction.choice(), options.budget);
    ProgressBar bar(console.err, console.errIsTerminal || options.common.progress,
                    "Looking for arrays", "percent");
    suggesting.run(
        options.common.threads, [] { return false; }, {},
        [&bar](double share) { bar.update(static_cast<std::uint64_t>(100 * share), 100); });
    if (suggesting.found().empty())
        return Error{"no array of four boxes or more hangs clear in this room", options.file};
    Json list = Json::array();
    for (const Suggestion& suggestion : suggesting.found())
        list.push_back(jsonOf(suggestion, *state, options));
    PendingFiles files;
    if (!options.outFile.empty()) {
        state->project.array = suggesting.found().front().array;
        if (auto added = files.add(options.outFile, projectBytes(state->project)); !added)
            return added;
    }
    return deliver(console, jsonText(Json{{"suggestions", list}}), files, state->warnings);
}

} // namespace

void addSuggestCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "suggest", "look for arrays for the room and its areas, the most even first, as JSON");
    const auto options = std::make_shared<Options>();
    command->add_option("--out", options->outFile, "save the project with the most even one")
        ->check(fileName())
        ->type_name("FILE");
    command->add_option("--budget", options->budget, "configurations that are measured at first")
        ->check(numberBetween(1, 1e12))
        ->type_name("EVALUATIONS")
        ->capture_default_str();
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --budget 20000 --out suggested.lad");
    command->callback([options, &work] {
        work = [options](const Console& console) { return suggest(*options, console); };
    });
}

} // namespace orva
