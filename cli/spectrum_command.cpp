#include "cli/json.h"
#include "cli/prediction.h"
#include "engine/spectrum.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    std::vector<std::string> places; ///< "X,Y"
    int area = 0;                    ///< 0: the places
    int points = 200;
};

std::optional<Point> placeOf(const std::string& text)
{
    const auto figures = figuresOf(text, ',');
    return figures && figures->size() == 2 ? std::optional(Point{(*figures)[0], (*figures)[1]})
                                           : std::nullopt;
}

Result<std::vector<Point>> pointsOf(const Options& options, const Room& room)
{
    if (options.area > room.GIGetNumAreas())
        return noSuchArea(options.area, options.file);
    if (options.area > 0)
        return lineReceivers(room.area(options.area), options.points);
    std::vector<Point> points;
    for (const std::string& text : options.places)
        points.push_back(placeOf(text).value_or(Point{}));
    return points;
}

Result<Done> printSpectrum(const Options& options, const Console& console)
{
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    const Result<std::vector<Point>> points = pointsOf(options, state->project.room);
    if (!points)
        return points.error();
    const LevelChoice choice = options.prediction.choice();
    const std::shared_ptr<const LevelKernel> kernel = state->levelKernel();
    const PerBand<BandReference>& levels = state->speakerData.BandLevel;
    const PlacedSources placed = placedSources(state->project.array);
    const BandLevels alone = singleBandLevels(*kernel, levels, placed.sources, *points, choice);
    const std::vector<float> totals =
        levelsOf(bandPowersAt(*kernel, placed.sources, *points, choice.bands), levels, choice);

    Json list = Json::array();
    for (std::size_t at = 0; at < points->size(); ++at) {
        const Point& point = (*points)[at];
        PerBand<float> bands;
        for (std::size_t band = 0; band < kBands; ++band)
            bands[band] = alone[band][at];
        const std::optional<NearestBox> nearest = nearestBox(placed, point);
        const auto figure = [&](double value) {
            return nearest ? jsonNumber(static_cast<float>(value)) : Json();
        };
        const double distance = nearest ? nearest->distanceM : 0;
        list.push_back({{"x", jsonNumber(static_cast<float>(point.x))},
                        {"y", jsonNumber(static_cast<float>(point.y))},
                        {"distance", figure(distance)},
                        {"delay", figure(distance / state->air.SpeedOfSound * 1000)},
                        {"box", nearest ? Json(nearest->position + 1) : Json()},
                        {"levels", jsonNumbers(bands)},
                        {"total", jsonNumber(totals[at])}});
    }
    Json result = {{"bands", kNominalHz},
                   {"levelField", static_cast<int>(choice.field)},
                   {"aWeighted", choice.aWeighted},
                   {"points", list}};
    addWarnings(result, state->contradictions);
    PendingFiles files;
    return deliver(console, jsonText(result), files, state->warnings);
}

} // namespace

void addSpectrumCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "spectrum", "print the level of each band at places or along an audience area as JSON");
    const auto options = std::make_shared<Options>();
    CLI::Option_group* where = command->add_option_group("where");
    addRepeatedOption(*where, "--at", options->places, "a place in the room, metres",
                      accepted([](const std::string& text) { return placeOf(text).has_value(); },
                               "not a place X,Y in metres"),
                      "X,Y");
    CLI::Option* area = addAreaOption(*where, options->area, "audience area");
    where->require_option(1);
    command->add_option("--points", options->points, "points along the audience area")
        ->check(numberBetween(1, 1'000'000))
        ->needs(area)
        ->type_name("N")
        ->capture_default_str();
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --at 12,1.2 --at 24,1.2");
    command->callback([options, &work] {
        work = [options](const Console& console) { return printSpectrum(*options, console); };
    });
}

} // namespace orva
