#include "app/forms/search_setup.h"
#include "cli/json.h"
#include "cli/prediction.h"
#include "cli/progress_bar.h"
#include "lang/string_table.h"
#include "optimize/quick_search.h"
#include "optimize/search_fingerprint.h"
#include "optimize/search_part.h"

#include <chrono>
#include <limits>
#include <memory>

namespace orva {

namespace {

/// Measures are doubles, so that parts of a search can be joined without losing an order.
using PreciseJson = nlohmann::ordered_json;
using Clock = std::chrono::steady_clock;

struct Options {
    CommonOptions common;
    PredictionOptions prediction;
    std::string file;
    int area = 0;
    std::string measure = "smooth";
    int points = 200;
    bool allSpeakers = false;
    bool neighbours = false;
    std::vector<double> fitLine; ///< start, length, slope, level
    std::optional<std::uint64_t> limit;
    std::uint64_t from = 0;
    std::optional<std::uint64_t> count;
    bool quick = false;
    std::string outFile;
    std::vector<std::string> merge;
};

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

PreciseJson jsonOf(const Ranked& entry)
{
    return {{"angles", entry.angles},
            {"rms", entry.rms < kNoMeasure ? PreciseJson(entry.rms) : PreciseJson()},
            {"number", entry.number}};
}

PreciseJson jsonOf(const std::vector<Ranked>& best)
{
    PreciseJson list = PreciseJson::array();
    for (const Ranked& entry : best)
        list.push_back(jsonOf(entry));
    return list;
}

/// The set that the options ask for; none when the file's array has no box that aims there.
Result<CandidateSet> candidatesOf(const Options& options, const Workspace& state)
{
    const std::optional<JointRange> aiming =
        GetAreaSpeakers(state.project.room, state.project.array, options.area);
    if (!aiming)
        return Error{std::string(MlGetString(options.common.text().language, Text::NoBoxAims)),
                     options.file};
    CandidateSet candidates(state.project.array,
                            options.allSpeakers ? allJoints(state.project.array) : *aiming,
                            options.neighbours);
    if (!candidates.NumConfigs())
        return Error{"there are more configurations than 64 bits can count; narrow the set",
                     options.file};
    if (options.from >= *candidates.NumConfigs())
        return Error{"there are only " + std::to_string(*candidates.NumConfigs()) +
                         " configurations",
                     options.file};
    return candidates;
}

FitLineTarget targetOf(const Options& options, const Segment& area)
{
    if (options.fitLine.empty())
        return FitLineTarget::wholeArea(area);
    return {options.fitLine[0], options.fitLine[1], options.fitLine[2], options.fitLine[3]};
}

void searchExhaustively(const Options& options, const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const Console& console, PreciseJson& result,
                        std::vector<Ranked>& best)
{
    std::uint64_t count = *candidates.NumConfigs() - options.from;
    count = std::min(count, options.count.value_or(count));
    count = std::min(count, options.limit.value_or(count));
    Search search(task, candidates, options.from, count);
    ProgressBar bar(console.err, console.errIsTerminal || options.common.progress,
                    "Testing configurations", "configurations");
    while (!search.advance(options.common.threads, [] { return false; }))
        bar.update(search.tested(), count);
    bar.update(search.tested(), count);
    best = search.decide().best();
    result["tested"] = search.tested();
    result["first"] = search.first();
}

void searchQuickly(const Options& options, const std::shared_ptr<const SearchTask>& task,
                   const CandidateSet& candidates, PreciseJson& result, std::vector<Ranked>& best)
{
    std::uint64_t asked = 0;
    const QuickResult quick =
        quickSearch(task, candidates, [&] { return options.limit && ++asked > *options.limit; });
    best = quick.ranking.best();
    result["tested"] = quick.evaluations;
    result["first"] = 0;
    result["evaluations"] = quick.evaluations;
    result["proved"] = quick.proved;
}

Result<Done> optimize(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {}); !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    if (options.area > state->project.room.GIGetNumAreas())
        return Error{"there is no audience area " + std::to_string(options.area), options.file};
    const Result<CandidateSet> candidates = candidatesOf(options, *state);
    if (!candidates)
        return candidates.error();
    const auto task = withKernel(
        searchTask(*state, state->project, options.area,
                   targetOf(options, state->project.room.area(options.area)),
                   measureNamed(options.measure), options.points, options.prediction.choice()));

    const Clock::time_point start = Clock::now();
    PreciseJson result = {{"task", searchFingerprint(*task, *candidates, options.area)},
                          {"configurations", *candidates->NumConfigs()}};
    std::vector<Ranked> best;
    if (options.quick)
        searchQuickly(options, task, *candidates, result, best);
    else
        searchExhaustively(options, task, *candidates, console, result, best);
    const std::chrono::duration<double> seconds = Clock::now() - start;
    result["range"] = {candidates->range().first, candidates->range().last};
    result["best"] = jsonOf(best);
    result["original"] = {{"angles", state->project.array.GIAGetAllAngle()}};
    result["configurationsPerSecond"] =
        result["tested"].get<double>() / std::max(seconds.count(), 1e-9);
    addWarnings(result, state->contradictions);

    PendingFiles files;
    if (!options.outFile.empty()) {
        state->project.array = withAngles(state->project.array, best.front().angles);
        if (auto added = files.add(options.outFile, projectBytes(state->project)); !added)
            return added;
    }
    return deliver(console, jsonText(result), files, state->warnings);
}

Result<PartResult> readPartFile(const std::string& file)
{
    const Result<std::string> text = readFile(file, kPartMaxBytes + 1);
    if (!text)
        return text.error();
    return readPart(*text, file);
}

Result<Done> merge(const std::vector<std::string>& names, const Console& console)
{
    std::vector<SearchPart> parts;
    PartResult search;
    for (const std::string& name : names) {
        const Result<PartResult> part = readPartFile(name);
        if (!part)
            return part.error();
        if (parts.empty())
            search = *part;
        else if (!part->belongsTo(search))
            return Error{"this is a part of another search than " + names.front(), name};
        parts.push_back(part->part);
    }
    const Result<SearchPart> whole = mergeParts(std::move(parts));
    if (!whole)
        return whole.error();
    const PreciseJson merged = {{"task", search.task},
                                {"configurations", search.configurations},
                                {"tested", whole->tested},
                                {"first", whole->first},
                                {"range", {search.range.first, search.range.last}},
                                {"best", jsonOf(whole->best)},
                                {"original", {{"angles", search.original}}}};
    PendingFiles files;
    return deliver(console, jsonText(merged), files);
}

/// What is searched, and how.
void addSearchOptions(CLI::App* command, const std::shared_ptr<Options>& options)
{
    command->add_option("--area", options->area, "audience area")
        ->check(numberBetween(1, std::numeric_limits<int>::max()))
        ->type_name("N");
    command->add_option("--measure", options->measure, "what is even: smooth or along a line")
        ->check(CLI::IsMember(measureNames()))
        ->type_name("")
        ->capture_default_str();
    command->add_option("--points", options->points, "points along the area")
        ->check(numberBetween(2, 10000))
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--all-speakers", options->allSpeakers,
                      "vary every joint, not only those of boxes that aim at the area");
    command->add_flag("--neighbours", options->neighbours, "only angles next to the present ones");
    command
        ->add_option("--fit-line", options->fitLine,
                     "wanted levels: start and length in metres along the area, dB per metre, dB "
                     "at the start")
        ->expected(4)
        ->delimiter(',')
        ->type_name("S,L,SLOPE,LEVEL");
    const auto atLeastOne = numberBetween(1, 1.8e19);
    command->add_option("--limit", options->limit, "test at most K configurations")
        ->check(atLeastOne)
        ->type_name("K");
    command->add_option("--from", options->from, "begin with configuration K, from 0")
        ->check(numberBetween(0, 1.8e19))
        ->type_name("K");
    command->add_option("--count", options->count, "test M configurations")
        ->check(atLeastOne)
        ->type_name("M");
    command->add_flag("--quick", options->quick,
                      "search quickly, without the proof that there is nothing better");
    command->add_option("--out", options->outFile, "save the project with the best angles")
        ->check(fileName())
        ->type_name("FILE");
    command
        ->add_option(
            "--merge", options->merge,
            "join the results of parts of one search; parts whose tasks differ are refused")
        ->check(fileName())
        ->type_name("FILE...");
}

} // namespace

void addOptimizeCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "optimize", "search the splay angles that cover an audience area most evenly");
    const auto options = std::make_shared<Options>();
    command->add_option("project", options->file, "the project")
        ->check(fileName())
        ->type_name("PROJECT.lad");
    addSearchOptions(command, options);
    addPredictionOptions(*command, options->prediction);
    addCommonOptions(*command, options->common);
    command->callback([options, &work] {
        const bool joins = !options->merge.empty();
        if (joins ? !options->file.empty() : options->file.empty())
            throw CLI::ValidationError("optimize", joins ? "--merge takes results, no project"
                                                         : "PROJECT.lad is required");
        if (!joins && options->area == 0)
            throw CLI::RequiredError("--area");
        if (options->quick && (options->from > 0 || options->count))
            throw CLI::ValidationError("--quick", "tests no part of the order: no --from, --count");
        if (!options->fitLine.empty() && options->fitLine[1] <= 0)
            throw CLI::ValidationError("--fit-line", "the length must be above 0");
        work = [options, joins](const Console& console) {
            return joins ? merge(options->merge, console) : optimize(*options, console);
        };
    });
}

} // namespace orva
