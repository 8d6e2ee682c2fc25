#include "cli/json.h"
#include "cli/prediction.h"
#include "drawing/curve_drawing.h"
#include "lang/number_text.h"

#include <limits>
#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    int points = 200;
    int pictureArea = 1;
    PictureOptions picture;
    std::string csvFile;
};

/// A line per receiver: "area,point,distance,x,y,level", points from 1, metres along the area.
class LevelsCsv {
public:
    void add(int area, const Segment& line, std::span<const float> levels)
    {
        const std::vector<Point> points = lineReceivers(line, static_cast<int>(levels.size()));
        const double step = line.lengthM / static_cast<double>(levels.size());
        for (std::size_t at = 0; at < levels.size(); ++at) {
            m_text += std::to_string(area) + ',' + std::to_string(at + 1);
            for (const double figure : {static_cast<double>(at) * step, points[at].x, points[at].y,
                                        static_cast<double>(levels[at])})
                m_text += ',' + fixedText(figure, 3);
            m_text += '\n';
        }
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text = "area,point,distance,x,y,level\n";
};

Result<Done> printLevels(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.picture.file, options.csvFile},
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

    LevelsCsv csv;
    Json areas = Json::array();
    for (int number = 1; number <= state->project.room.GIGetNumAreas(); ++number) {
        const auto [levels, largest, smallest] =
            levelsOf(state->project.room.area(number), options.points);
        csv.add(number, state->project.room.area(number), levels);
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
    if (!options.csvFile.empty())
        if (auto added = files.add(options.csvFile, csv.text()); !added)
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
    command->add_option("--area", options->pictureArea, "audience area of the picture")
        ->check(numberBetween(1, std::numeric_limits<int>::max()))
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--csv", options->csvFile, "write the levels in dB along all areas")
        ->check(fileName())
        ->type_name("FILE");
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
