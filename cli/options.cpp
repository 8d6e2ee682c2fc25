#include "cli/options.h"

#include "engine/acoustics.h"
#include "engine/parallel.h"
#include "lang/number_text.h"
#include "lang/utf8.h"
#include "painting/picture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <ostream>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace orva {

namespace {

CLI::Validator numberCheck(const std::string& range, const std::function<bool(double)>& accepts)
{
    return {[=](const std::string& text) {
                double value = 0;
                const bool number = CLI::detail::lexical_cast(text, value);
                return number && accepts(value) ? std::string() : text + " is not " + range;
            },
            ""};
}

CLI::Validator nominalFrequency()
{
    return {[](const std::string& text) {
                int hz = 0;
                const bool nominal =
                    text.find_first_not_of("0123456789") == std::string::npos &&
                    CLI::detail::lexical_cast(text, hz) &&
                    std::find(kNominalHz.begin(), kNominalHz.end(), hz) != kNominalHz.end();
                return nominal ? std::string()
                               : text + " is not the nominal frequency of a one-third-octave band "
                                        "from 100 to 12500 Hz";
            },
            ""};
}

} // namespace

CLI::Validator numberBetween(double low, double high)
{
    return numberCheck("a number from " + plainText(low, 2) + " to " + plainText(high, 2),
                       [=](double value) { return value >= low && value <= high; });
}

CLI::Validator accepted(const std::function<bool(const std::string&)>& accepts,
                        const std::string& what)
{
    return {[=](const std::string& text) {
                return accepts(text) ? std::string() : text + " is " + what;
            },
            ""};
}

std::optional<std::vector<double>> figuresOf(const std::string& text, char separator)
{
    std::vector<double> figures;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        double figure = 0;
        if (!CLI::detail::lexical_cast(text.substr(begin, end - begin), figure) ||
            !std::isfinite(figure))
            return std::nullopt;
        figures.push_back(figure);
        begin = end + 1;
    }
    return figures;
}

Error noSuchArea(int number, const std::string& file)
{
    return {"there is no audience area " + std::to_string(number), file};
}

void addRepeatedOption(CLI::App& command, const std::string& name, std::vector<std::string>& texts,
                       const std::string& description, const CLI::Validator& check,
                       const std::string& typeName)
{
    command.add_option(name, texts, description + "; may be repeated")
        ->check(check)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->type_name(typeName);
}

CLI::Validator fileName()
{
    return {[](const std::string& name) {
                return name.empty() ? std::string("the name of a file or folder is empty")
                                    : std::string();
            },
            ""};
}

CLI::Validator numberAboveZero()
{
    return numberCheck("a number above 0", [](double value) {
        return value <= static_cast<double>(std::numeric_limits<float>::max()) &&
               static_cast<float>(value) > 0;
    });
}

void addCommonOptions(CLI::App& command, CommonOptions& options)
{
    options.threads = coreCount();
    command
        .add_option("--data", options.dataFolder,
                    "folder with system.dat and systemsm.dat (default: the program's own)")
        ->check(fileName())
        ->type_name("DIR");
    command
        .add_option("--speaker-data", options.speakerDataFile,
                    "loudspeaker data (.xhn) to read over the system's own")
        ->check(fileName())
        ->type_name("FILE");
    command.add_option("--temperature", options.temperatureC, "air temperature in °C, -20 to 50")
        ->check(numberBetween(kColdestC, kHottestC))
        ->type_name("C")
        ->capture_default_str();
    command.add_option("--units", options.units, "lengths in texts and drawings")
        ->check(CLI::IsMember({"m", "ft"}))
        ->type_name("UNIT")
        ->capture_default_str();
    command.add_option("--language", options.language, "language of texts and drawings")
        ->check(CLI::IsMember({"en", "de"}))
        ->type_name("LANG")
        ->capture_default_str();
    command
        .add_option_function<int>(
            "--threads",
            [&options](int threads) { options.threads = std::min(threads, kMostThreads); },
            "threads to calculate on (default: one per core)")
        ->check(numberBetween(1, std::numeric_limits<int>::max()))
        ->type_name("N");
    command.add_flag("--progress", options.progress,
                     "show progress on standard error even where that is no terminal");
}

CLI::Option* addAreaOption(CLI::App& command, int& area, const std::string& description)
{
    return command.add_option("--area", area, description)
        ->check(numberBetween(1, std::numeric_limits<int>::max()))
        ->type_name("N");
}

void addPointsOption(CLI::App& command, int& points)
{
    command.add_option("--points", points, "points along each audience area")
        ->check(numberBetween(1, 1'000'000))
        ->type_name("N")
        ->capture_default_str();
}

void addFigureOptions(CLI::App& command, FigureFiles& files, const std::string& figures)
{
    command.add_option("--csv", files.csv, "write " + figures + " as CSV")
        ->check(fileName())
        ->type_name("FILE");
    command.add_option("--json", files.json, "write " + figures + " as JSON")
        ->check(fileName())
        ->type_name("FILE");
}

Result<Done> addFigures(const FigureFiles& asked, const std::function<std::string()>& csv,
                        const std::function<std::string()>& json, PendingFiles& files)
{
    if (!asked.csv.empty())
        if (auto added = files.add(asked.csv, csv()); !added)
            return added;
    if (!asked.json.empty())
        if (auto added = files.add(asked.json, json()); !added)
            return added;
    return Done{};
}

Result<Done> addFigures(const FigureFiles& asked, const std::function<ExportTable()>& table,
                        const TextOptions& text, PendingFiles& files)
{
    return addFigures(
        asked, [&] { return csvOf(table()); }, [&] { return jsonOf(table(), text); }, files);
}

void addMapOptions(CLI::App& command, MapOptions& options, const std::string& figures)
{
    command.add_option("--cell", options.cellM, "size of the square cells in metres")
        ->check(numberAboveZero())
        ->type_name("M")
        ->capture_default_str();
    addFigureOptions(command, options.figures, figures);
}

void addExample(CLI::App& command, const std::string& arguments)
{
    const std::string before = command.get_footer();
    command.footer(before + (before.empty() ? "" : "\n\n") + "Example:\n  orva-cli " +
                   command.get_name() + " " + arguments);
}

void addProjectOptions(CLI::App& command, ProjectOptions& options)
{
    command.add_option("PROJECT.lad", options.file, "the project")
        ->required()
        ->check(fileName())
        ->type_name("");
    addCommonOptions(command, options.common);
}

void addProjectCommand(CLI::App& program, Work& work, const char* name, const char* description,
                       Result<Done> (*run)(const ProjectOptions&, const Console&))
{
    CLI::App* command = program.add_subcommand(name, description);
    const auto options = std::make_shared<ProjectOptions>();
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad");
    command->callback([options, run, &work] {
        work = [options, run](const Console& console) { return run(*options, console); };
    });
}

void addPredictionOptions(CLI::App& command, PredictionOptions& options)
{
    command.add_option("--map-type", options.mapType, "which level of a box counts")
        ->check(CLI::IsMember({"detailed", "continuous", "peak"}))
        ->type_name("TYPE")
        ->capture_default_str();
    command
        .add_option("--averaging", options.averaging,
                    "bands to sum; continuous and peak levels are always broadband")
        ->check(CLI::IsMember({"third", "octave", "three-octave", "broadband"}))
        ->type_name("BANDS")
        ->capture_default_str();
    command.add_option("--band", options.bandHz, "nominal frequency of the middle band in Hz")
        ->check(nominalFrequency())
        ->type_name("HZ")
        ->capture_default_str();
    command.add_flag("--a-weighted", options.aWeighted, "apply A-weighting");
    command
        .add_option(
            "--humidity", options.humidityPercent,
            "relative humidity in percent, 1 to 100: the air absorbs as at this humidity and "
            "the temperature (default: as at 60 % and 20 °C)")
        ->check(numberBetween(kDriestPercent, kWettestPercent))
        ->type_name("PERCENT");
}

TextOptions CommonOptions::text() const
{
    return {language == "de" ? Language::German : Language::English, units == "m"};
}

DrawingOptions CommonOptions::drawing() const
{
    DrawingOptions options;
    options.text = text();
    return options;
}

void addPictureOptions(CLI::App& command, PictureOptions& options, const char* description)
{
    command.add_option("--png", options.file, description)->check(fileName())->type_name("FILE");
    command.add_option("--width", options.widthPx, "width of the picture in pixels")
        ->check(numberBetween(1, 16384))
        ->type_name("PX")
        ->capture_default_str();
}

Result<Done> addPicture(const PictureOptions& options,
                        const std::function<void(DrawingSurface&)>& draw, PendingFiles& files)
{
    if (options.file.empty())
        return Done{};
    const int height = std::max(1, options.widthPx * 9 / 16);
    return files.add(options.file, pngPicture(options.widthPx, height, draw));
}

Result<Done> deliver(const Console& console, const std::string& result, PendingFiles& files,
                     const std::vector<std::string>& warnings)
{
    console.out << result << std::flush;
    if (!console.out)
        return Error{"the result cannot be written", "standard output"};
    const Result<Saved> saved = files.commit();
    if (!saved)
        return saved.error();
    const auto warn = [&](const std::string& line) {
        console.err << "orva-cli: warning: " << printable(line) << '\n';
    };
    for (const std::string& line : warnings)
        warn(line);
    for (const Message& note : saved->notes)
        warn(note.text());
    return Done{};
}

std::filesystem::path CommonOptions::dataFolderOf(const Console& console) const
{
    return dataFolder.empty() ? console.programFolder / "bin" : std::filesystem::path(dataFolder);
}

Result<Done> checkOutputs(const Console& console, const CommonOptions& options,
                          const std::vector<std::string>& outputs,
                          const std::vector<std::string>& inputs)
{
    const std::filesystem::path folder = options.dataFolderOf(console);
    std::vector<std::filesystem::path> read = {folder / "system.dat", folder / "systemsm.dat",
                                               options.speakerDataFile};
    read.insert(read.end(), inputs.begin(), inputs.end());
    for (const std::string& output : outputs)
        for (const std::filesystem::path& input : read)
            if (!output.empty() && !input.empty() && isSameFile(output, input))
                return Error{"the output would replace a file that is read", output};
    return Done{};
}

LevelChoice PredictionOptions::choice() const
{
    const LevelField field = mapType == "continuous" ? LevelField::Continuous
                             : mapType == "peak"     ? LevelField::Peak
                                                     : LevelField::Relative;
    const Averaging chosen = averaging == "octave"         ? Averaging::Octave
                             : averaging == "three-octave" ? Averaging::ThreeOctave
                             : averaging == "broadband"    ? Averaging::Broadband
                                                           : Averaging::Third;
    const auto band = std::find(kNominalHz.begin(), kNominalHz.end(), bandHz) - kNominalHz.begin();
    return chosenLevels(field, chosen, static_cast<int>(band), aWeighted);
}

} // namespace orva
