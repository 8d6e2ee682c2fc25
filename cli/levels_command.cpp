#include "cli/json.h"
#include "cli/prediction.h"
#include "drawing/curve_drawing.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    int points = 200;
    int pictureArea = 1;
    PictureOptions picture;
    FigureFiles figures;
};

Result<Done> printLevels(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common,
                                  {options.picture.file, options.figures.csv, options.figures.json},
                                  {options.file});
        !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    const LevelChoice choice = options.prediction.choice();
    const std::shared_ptr<const LevelKernel> kernel = state->levelKernel();
    const auto levelsOf = [&](const Segment& line, int points) {
        return levelsAlong(*kernel, state->speakerData.BandLevel, state->project.array, line,
                           choice, points, options.common.threads);
    };

    if (options.pictureArea > state->project.room.GIGetNumAreas())
        return noSuchArea(options.pictureArea, options.file);
    PendingFiles files;
    const auto draw = [&](DrawingSurface& surface) {
        const Segment area = state->project.room.area(options.pictureArea);
        const int points = curvePoints(surface.pixelWidth());
        DrawCurves(surface,
                   {options.pictureArea, area.lengthM, {{levelsOf(area, points).levels}}, {}},
                   options.common.drawing());
    };
    if (auto drawn = addPicture(options.picture, draw, files); !drawn)
        return drawn;

    std::vector<std::vector<float>> curves;
    Json areas = Json::array();
    for (int number = 1; number <= state->project.room.GIGetNumAreas(); ++number) {
        const auto [levels, largest, smallest] =
            levelsOf(state->project.room.area(number), options.points);
        curves.push_back(levels);
        areas.push_back({{"area", number},
                         {"levels", jsonNumbers(levels)},
                         {"max", jsonNumber(largest)},
                         {"min", jsonNumber(smallest)}});
    }
    Json result = {{"fromBand", choice.bands.from},
                   {"toBand", choice.bands.to},
                   {"levelField", static_cast<int>(choice.field)},
                   {"aWeighted", choice.aWeighted},
                   {"foh", jsonNumber(levelsOf(fohLine(state->project.room), 1).largest)},
                   {"areas", areas}};
    const TextOptions text = options.common.text();
    const auto table = [&] { return curveTable(state->project.room, curves, text); };
    if (auto added = addFigures(options.figures, table, text, files); !added)
        return added;
    addWarnings(result, state->contradictions);
    return deliver(console, jsonText(result), files, state->warnings);
}

} // namespace

void addLevelsCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "levels", "print the level at the FOH and along each audience area as JSON");
    const auto options = std::make_shared<Options>();
    addPointsOption(*command, options->points);
    addAreaOption(*command, options->pictureArea, "audience area of the picture")
        ->capture_default_str();
    addFigureOptions(*command, options->figures, "the levels in dB along all areas");
    addPictureOptions(*command, options->picture, "write the curve of that area");
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command,
               "theatre.lad --points 5 --map-type continuous --a-weighted --csv levels.csv");
    command->callback([options, &work] {
        work = [options](const Console& console) { return printLevels(*options, console); };
    });
}

} // namespace orva
