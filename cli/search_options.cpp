#include "cli/search_options.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace orva {
namespace {

std::vector<std::string> measureNames()
{
    std::vector<std::string> names;
    for (const MeasureRecord& record : allMeasures())
        names.emplace_back(record.name);
    return names;
}

Measure measureNamed(const std::string& name)
{
    const std::vector<std::string> names = measureNames();
    return static_cast<Measure>(std::find(names.begin(), names.end(), name) - names.begin());
}

std::optional<WeightedArea> areaOf(const std::string& text)
{
    const auto figures = figuresOf(text, ':');
    if (!figures || figures->size() > 2 || figures->front() < 1 ||
        figures->front() > std::numeric_limits<int>::max() ||
        figures->front() != std::trunc(figures->front()))
        return std::nullopt;
    const double weight = figures->size() == 2 ? figures->back() : 1;
    return weight > 0 ? std::optional(WeightedArea{static_cast<int>(figures->front()), weight})
                      : std::nullopt;
}

/// Those of the options, whose texts have been checked.
std::vector<WeightedArea> areasOf(const SearchOptions& options)
{
    std::vector<WeightedArea> areas;
    for (const std::string& text : options.areas)
        areas.push_back(areaOf(text).value_or(WeightedArea{}));
    return areas;
}

constexpr std::string_view kHeight = "height:";

/// The heights of "height:FROM:TO:STEP", as 32-bit floats; none where that is not sound.
std::optional<std::vector<float>> heightsOf(const std::string& text)
{
    if (!text.starts_with(kHeight))
        return std::nullopt;
    const auto figures = figuresOf(text.substr(kHeight.size()), ':');
    if (!figures || figures->size() != 3)
        return std::nullopt;
    return heightsBetween((*figures)[0], (*figures)[1], (*figures)[2]);
}

Freedom freedomOf(const SearchOptions& options)
{
    Freedom freedom;
    for (const std::string& text : options.free)
        if (text == "pin")
            freedom.pins = true;
        else
            freedom.heightsM = heightsOf(text).value_or(std::vector<float>());
    return freedom;
}

} // namespace

SearchChoice SearchOptions::choice(const LevelChoice& levels) const
{
    SearchChoice choice;
    choice.areas = areasOf(*this);
    if (!fitLine.empty())
        choice.target = FitLineTarget{fitLine[0], fitLine[1], fitLine[2], fitLine[3]};
    choice.measure = measureNamed(measure);
    choice.perDoublingDb = perDoublingDb.value_or(0);
    choice.points = points;
    choice.allJoints = allSpeakers;
    choice.neighbours = neighbours;
    choice.freedom = freedomOf(*this);
    choice.levels = levels;
    return choice;
}

void addSearchOptions(CLI::App& command, SearchOptions& options)
{
    addRepeatedOption(command, "--area", options.areas,
                      "audience area, with its weight among several",
                      accepted([](const std::string& text) { return areaOf(text).has_value(); },
                               "not the number of an area, N or N:WEIGHT"),
                      "N[:WEIGHT]");
    addRepeatedOption(
        command, "--free", options.free, "vary the pin, or the height of the pick point in metres",
        accepted([](const std::string& text) { return text == "pin" || heightsOf(text); },
                 "neither pin nor height:FROM:TO:STEP in metres, the step above 0"),
        "pin|height:FROM:TO:STEP");
    command
        .add_option("--per-doubling", options.perDoublingDb,
                    "wanted change in dB with every doubling of the distance; of --measure even")
        ->check(numberBetween(-100, 100))
        ->type_name("DB");
    command
        .add_option("--measure", options.measure,
                    "what shall be even: the change along the area (smooth), the distance to "
                    "--fit-line (line), "
                    "the levels of all areas against their mean (even)")
        ->check(CLI::IsMember(measureNames()))
        ->type_name("")
        ->capture_default_str();
    command.add_option("--points", options.points, "points along the area")
        ->check(numberBetween(2, 10000))
        ->type_name("N")
        ->capture_default_str();
    command.add_flag("--all-speakers", options.allSpeakers,
                     "vary every joint, not only those of boxes that aim at the area");
    command.add_flag("--neighbours", options.neighbours, "only angles next to the present ones");
    command
        .add_option("--fit-line", options.fitLine,
                    "wanted levels: start and length in metres along the area, dB per metre, dB "
                    "at the start")
        ->expected(4)
        ->delimiter(',')
        ->type_name("S,L,SLOPE,LEVEL");
    const auto atLeastOne = numberBetween(1, 1.8e19);
    command.add_option("--limit", options.limit, "test at most K configurations")
        ->check(atLeastOne)
        ->type_name("K");
    command
        .add_option("--from", options.from,
                    "begin with configuration K, from 0, and keep the given order")
        ->check(numberBetween(0, 1.8e19))
        ->type_name("K");
    command.add_option("--count", options.count, "test M configurations")
        ->check(atLeastOne)
        ->type_name("M");
    command.add_flag("--quick", options.quick,
                     "search quickly, without the proof that there is nothing better");
}

void checkSearch(const SearchOptions& options)
{
    if (options.areas.empty())
        throw CLI::RequiredError("--area");
    std::set<int> numbers;
    for (const WeightedArea& area : areasOf(options))
        if (!numbers.insert(area.number).second)
            throw CLI::ValidationError("--area",
                                       std::to_string(area.number) + " is named a second time");
    if (options.areas.size() > 1 && !options.fitLine.empty())
        throw CLI::ValidationError("--fit-line", "goes with one area");
    if (options.perDoublingDb && measureNamed(options.measure) != Measure::Even)
        throw CLI::ValidationError("--per-doubling", "goes with --measure even");
    std::set<bool> kinds;
    for (const std::string& text : options.free)
        if (!kinds.insert(text == "pin").second)
            throw CLI::ValidationError("--free", text + " frees the same a second time");
}

} // namespace orva
