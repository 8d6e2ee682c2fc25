#include "cli/json.h"
#include "cli/prediction.h"
#include "drawing/curve_drawing.h"

#include <limits>
#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    int points = 200;
    int pictureArea = 1;
    PictureOptions picture;
};

Result<Done> printLevels(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.picture.file}, {options.file});
        !apart)
        return apart;
    Result<OpenProject> state = openForPrediction(options.file, options.common, console);
    if (!state)
        return state.error();
    const LevelChoice choice = options.prediction.choice();
    const std::shared_ptr<const LevelKernel> kernel = state->levelKernel();
    const auto levelsAlong = [&](const AreaSegment& line, int points) {
        return LineSPL(*kernel, state->speakerData.BandLevel, state->project.array, line, choice,
                       points, options.common.threads);
    };

    if (options.pictureArea > state->project.room.GIGetNumAreas())
        return Error{"there is no audience area " + std::to_string(options.pictureArea),
                     options.file};
    PendingFiles files;
    const auto draw = [&](DrawingSurface& surface) {
        const AreaSegment area = *state->project.room.GFAGetAudienceAreaSelect(options.pictureArea);
        const int points = curvePoints(surface.pixelWidth());
        std::vector<float> levels = levelsAlong(area, points);
        levels.resize(static_cast<std::size_t>(points));
        DrawCurves(surface, {options.pictureArea, area[5], {{std::move(levels)}}, {}},
                   options.common.drawing());
    };
    if (auto drawn = addPicture(options.picture, draw, files); !drawn)
        return drawn;

    Json areas = Json::array();
    for (int number = 1; number <= state->project.room.GIGetNumAreas(); ++number) {
        const std::vector<float> levels =
            levelsAlong(*state->project.room.GFAGetAudienceAreaSelect(number), options.points);
        const std::span<const float> all(levels);
        const auto points = static_cast<std::size_t>(options.points);
        areas.push_back({{"area", number},
                         {"levels", jsonNumbers(all.first(points))},
                         {"max", jsonNumber(levels[points])},
                         {"min", jsonNumber(levels[points + 1])}});
    }
    Json result = {{"fromBand", choice.bands.from},
                   {"toBand", choice.bands.to},
                   {"levelField", static_cast<int>(choice.field)},
                   {"aWeighted", choice.aWeighted},
                   {"foh", jsonNumber(levelsAlong(fohLine(state->project.room), 1).front())},
                   {"areas", areas}};
    addWarnings(result, state->contradictions);
    return deliver(console, jsonText(result), files, state->warnings);
}

} // namespace

void addLevelsCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "levels", "print the level at the FOH and along each audience area as JSON");
    const auto options = std::make_shared<Options>();
    command->add_option("--points", options->points, "points along each audience area")
        ->check(numberBetween(1, 1'000'000))
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--area", options->pictureArea, "audience area of the picture")
        ->check(numberBetween(1, std::numeric_limits<int>::max()))
        ->type_name("N")
        ->capture_default_str();
    addPictureOptions(*command, options->picture, "write the curve of that area");
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    command->callback([options, &work] {
        work = [options](const Console& console) { return printLevels(*options, console); };
    });
}

} // namespace orva
