#include "cli/json.h"
#include "cli/prediction.h"
#include "cli/progress_bar.h"
#include "drawing/room_view.h"
#include "engine/spl_map.h"

#include <chrono>
#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    MapOptions map;
    PictureOptions picture;
};

/// Runs a stage of the map under a progress bar; returns its seconds.
template<typename Stage>
float timed(const Options& options, const Console& console, const char* label, Stage stage)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    ProgressBar bar(console.err, console.errIsTerminal || options.common.progress, label, "rows");
    stage([&bar](int done, int total) {
        bar.update(static_cast<std::uint64_t>(done), static_cast<std::uint64_t>(total));
        return true;
    });
    return std::chrono::duration<float>(Clock::now() - start).count();
}

/// The room view with the map and the profiles of the areas, as the window draws it.
void drawMap(DrawingSurface& surface, Workspace& state, const MapGrid& grid, const SummedMap& map,
             const LevelChoice& choice, const DrawingOptions& options)
{
    RoomViewContent content;
    content.grid = &grid;
    content.map = &map;
    content.aimingLines = false;
    const Room& room = state.project.room;
    int number = 0;
    for (const int points : profilePointsOf(room, surface.pixelWidth(), surface.pixelHeight())) {
        content.profiles.push_back(levelsAlong(*state.levelKernel(), state.speakerData.BandLevel,
                                               state.project.array, room.area(++number), choice,
                                               points)
                                       .levels);
    }
    DrawRoomView(surface, room, state.project.array, content, state.air.SpeedOfSound, options);
}

Result<Done> calculateMap(const Options& options, const Console& console)
{
    if (auto apart =
            checkOutputs(console, options.common,
                         {options.map.figures.csv, options.map.figures.json, options.picture.file},
                         {options.file});
        !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    const Result<MapGrid> grid = mapGrid(state->project.room, options.map.cellM, options.file);
    if (!grid)
        return grid.error();

    const LevelChoice choice = options.prediction.choice();
    const std::shared_ptr<const LevelKernel> kernel = state->levelKernel();
    RawSplCache cache;
    std::optional<SummedMap> map;
    const float rawSeconds =
        timed(options, console, "Calculating raw SPL", [&](const Progress& progress) {
            CalcRawSPL(*kernel, state->project.array, *grid, choice.bands, options.common.threads,
                       progress, cache);
        });
    const float sumSeconds =
        timed(options, console, "Calculating summed SPL", [&](const Progress& progress) {
            map = CalcSummedSPL(cache, state->speakerData.BandLevel, *grid, choice,
                                options.common.threads, progress);
        });

    PendingFiles files;
    if (auto added = addFigures(
            options.map.figures, [&] { return mapCsv(*map, *grid); },
            [&] { return mapJson(*map, *grid); }, files);
        !added)
        return added;
    Result<Done> drawn = Done{};
    const float drawSeconds = timed(options, console, "Drawing", [&](const Progress&) {
        const auto draw = [&](DrawingSurface& surface) {
            drawMap(surface, *state, *grid, *map, choice, options.common.drawing());
        };
        drawn = addPicture(options.picture, draw, files);
    });
    if (!drawn)
        return drawn;
    const Json seconds = {{"raw", rawSeconds}, {"sum", sumSeconds}, {"draw", drawSeconds}};
    Json result = {{"columns", grid->columns},
                   {"rows", grid->rows},
                   {"cellW", jsonNumber(grid->CellW)},
                   {"cellH", jsonNumber(grid->CellH)},
                   {"offX", jsonNumber(grid->OffX)},
                   {"offY", jsonNumber(grid->OffY)},
                   {"max", jsonNumber(map->max)},
                   {"min", jsonNumber(map->min)},
                   {"seconds", seconds}};
    addWarnings(result, state->contradictions);
    return deliver(console, jsonText(result), files, state->warnings);
}

} // namespace

void addMapCommand(CLI::App& program, Work& work)
{
    CLI::App* command =
        program.add_subcommand("map", "calculate the level map over the whole room");
    const auto options = std::make_shared<Options>();
    addMapOptions(*command, options->map, "the levels in dB, top row first,");
    addPictureOptions(*command, options->picture, "write the room view with the map");
    addPredictionOptions(*command, options->prediction);
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --band 2000 --csv map.csv --png map.png");
    command->callback([options, &work] {
        work = [options](const Console& console) { return calculateMap(*options, console); };
    });
}

} // namespace orva
