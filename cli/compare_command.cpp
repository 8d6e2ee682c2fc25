#include "cli/json.h"
#include "cli/prediction.h"
#include "drawing/room_view.h"
#include "engine/area_figures.h"
#include "engine/spl_difference.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    std::string otherFile;
    int points = kAreaReceivers;
    MapOptions map;
    PictureOptions picture;
};

/// Both projects, ready to be heard in the first one's room.
struct Pair {
    OpenProject a;
    OpenProject b;
};

Result<Pair> openBoth(const Options& options, const Console& console)
{
    Result<OpenProject> a =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!a)
        return a.error();
    Result<OpenProject> b =
        openForPrediction(options.otherFile, options.common, options.prediction, console);
    if (!b)
        return b.error();
    if (!a->project.room.sameFrame(b->project.room))
        return Error{"its room has another size or point of reference than that of " + options.file,
                     options.otherFile};
    return Pair{std::move(*a), std::move(*b)};
}

std::vector<float> levelsAlong(OpenProject& project, const Segment& line, int points,
                               const Options& options)
{
    return levelsAlong(*project.levelKernel(), project.speakerData.BandLevel, project.project.array,
                       line, options.prediction.choice(), points, options.common.threads)
        .levels;
}

SummedMap mapOf(OpenProject& project, const MapGrid& grid, const Options& options)
{
    const LevelChoice choice = options.prediction.choice();
    RawSplCache cache;
    CalcRawSPL(*project.levelKernel(), project.project.array, grid, choice.bands,
               options.common.threads, {}, cache);
    return *CalcSummedSPL(cache, project.speakerData.BandLevel, grid, choice,
                          options.common.threads, {});
}

Json areaJson(int number, Pair& pair, const Options& options)
{
    const Segment area = pair.a.project.room.area(number);
    const std::vector<float> a = levelsAlong(pair.a, area, options.points, options);
    const std::vector<float> b = levelsAlong(pair.b, area, options.points, options);
    const auto spread = [](std::span<const float> levels) {
        const std::optional<AreaFigures> figures = areaFigures(levels);
        return figures ? jsonNumber(static_cast<float>(figures->spread)) : Json();
    };
    Json json = {{"area", number}, {"mean", Json()}, {"max", Json()}, {"min", Json()}};
    if (const auto figures = differenceFigures(a, b)) {
        json["mean"] = jsonNumber(static_cast<float>(figures->mean));
        json["max"] = jsonNumber(figures->max);
        json["min"] = jsonNumber(figures->min);
    }
    json["spread"] = {{"a", spread(a)}, {"b", spread(b)}};
    return json;
}

/// The map of the difference, as CSV and as the room view of the first project.
Result<Done> addMap(Pair& pair, const Options& options, PendingFiles& files)
{
    const FigureFiles& figures = options.map.figures;
    if (figures.csv.empty() && figures.json.empty() && options.picture.file.empty())
        return Done{};
    const Result<MapGrid> grid = mapGrid(pair.a.project.room, options.map.cellM, options.file);
    if (!grid)
        return grid.error();
    const SummedMap map =
        mapDifference(mapOf(pair.a, *grid, options), mapOf(pair.b, *grid, options));
    if (auto added = addFigures(
            figures, [&] { return mapCsv(map, *grid); }, [&] { return mapJson(map, *grid); },
            files);
        !added)
        return added;
    const auto draw = [&](DrawingSurface& surface) {
        RoomViewContent content;
        content.grid = &*grid;
        content.map = &map;
        content.figures = MapFigures::Differences;
        content.aimingLines = false;
        DrawRoomView(surface, pair.a.project.room, pair.a.project.array, content,
                     pair.a.air.SpeedOfSound, options.common.drawing());
    };
    return addPicture(options.picture, draw, files);
}

Result<Done> compare(const Options& options, const Console& console)
{
    if (auto apart =
            checkOutputs(console, options.common,
                         {options.map.figures.csv, options.map.figures.json, options.picture.file},
                         {options.file, options.otherFile});
        !apart)
        return apart;
    Result<Pair> pair = openBoth(options, console);
    if (!pair)
        return pair.error();
    const Room& room = pair->a.project.room;
    const float a = levelsAlong(pair->a, fohLine(room), 1, options).front();
    const float b = levelsAlong(pair->b, fohLine(room), 1, options).front();
    Json areas = Json::array();
    for (int number = 1; number <= room.GIGetNumAreas(); ++number)
        areas.push_back(areaJson(number, *pair, options));
    PendingFiles files;
    if (auto added = addMap(*pair, options, files); !added)
        return added;
    Json result = {{"foh",
                    {{"a", jsonNumber(a)},
                     {"b", jsonNumber(b)},
                     {"difference", jsonNumber(levelDifference(a, b))}}},
                   {"areas", areas}};
    std::vector<std::string> contradictions = pair->a.contradictions;
    std::vector<std::string> warnings = pair->a.warnings;
    contradictions.insert(contradictions.end(), pair->b.contradictions.begin(),
                          pair->b.contradictions.end());
    warnings.insert(warnings.end(), pair->b.warnings.begin(), pair->b.warnings.end());
    addWarnings(result, contradictions);
    return deliver(console, jsonText(result), files, warnings);
}

} // namespace

void addCompareCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "compare", "print how another project's levels differ in this one's room as JSON");
    const auto options = std::make_shared<Options>();
    addPointsOption(*command, options->points);
    addMapOptions(*command, options->map, "the differences in dB, top row first,");
    addPictureOptions(*command, options->picture, "write the room view with the difference map");
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad better.lad --png difference.png");
    command->add_option("other", options->otherFile, "the project that is compared with it")
        ->required()
        ->check(fileName())
        ->type_name("FILE");
    command->callback([options, &work] {
        work = [options](const Console& console) { return compare(*options, console); };
    });
}

} // namespace orva
