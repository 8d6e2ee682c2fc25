#include "app/forms/prediction.h"
#include "cli/prediction.h"

#include <memory>

namespace orva {

namespace {

constexpr double kLongestM = 10000;

struct Options : ProjectOptions {
    PredictionOptions prediction;
    int area = 1;
    double pitchM = 0.9;
    double offsetM = 0;
    FigureFiles figures;
};

Result<Done> printRows(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common,
                                  {options.figures.csv, options.figures.json}, {options.file});
        !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    const Room& room = state->project.room;
    if (options.area > room.GIGetNumAreas())
        return noSuchArea(options.area, options.file);
    Prediction prediction(state->levelKernel(), state->speakerData.BandLevel, state->project.array,
                          state->air.SpeedOfSound);
    const TextOptions text = options.common.text();
    const std::vector<SeatRow> rows =
        seatRows(prediction, room.area(options.area), options.prediction.choice(), options.pitchM,
                 options.offsetM);
    const auto table = [&] { return rowsTable(rows, text); };
    PendingFiles files;
    if (auto added = addFigures(options.figures, table, text, files); !added)
        return added;
    return deliver(console, jsonOf(table(), text), files, state->warnings);
}

} // namespace

void addRowsCommand(CLI::App& program, Work& work)
{
    CLI::App* command =
        program.add_subcommand("rows", "print the level at each row of seats of an area as JSON");
    const auto options = std::make_shared<Options>();
    addAreaOption(*command, options->area, "audience area")->capture_default_str();
    command->add_option("--pitch", options->pitchM, "from row to row in metres")
        ->check(numberBetween(kLeastPitchM, kLongestM))
        ->type_name("M")
        ->capture_default_str();
    command->add_option("--offset", options->offsetM, "of the first row in metres")
        ->check(numberBetween(0, kLongestM))
        ->type_name("M")
        ->capture_default_str();
    addFigureOptions(*command, options->figures, "the rows");
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --area 2 --pitch 1 --csv rows.csv");
    command->callback([options, &work] {
        work = [options](const Console& console) { return printRows(*options, console); };
    });
}

} // namespace orva
