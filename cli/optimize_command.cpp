#include "cli/interruption.h"
#include "cli/json.h"
#include "cli/prediction.h"
#include "cli/progress_bar.h"
#include "cli/search_options.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "optimize/quick_search.h"
#include "optimize/search_fingerprint.h"
#include "optimize/search_part.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace orva {

namespace {

/// Measures are doubles, so that parts of a search can be joined without losing an order.
using PreciseJson = nlohmann::ordered_json;
using Clock = std::chrono::steady_clock;

struct Options {
    CommonOptions common;
    PredictionOptions prediction;
    SearchOptions search;
    std::string file;
    std::string outFile;
    std::vector<std::string> merge;
};

PreciseJson jsonOf(const Ranked& entry)
{
    PreciseJson json = {{"angles", entry.angles},
                        {"rms", entry.rms < kNoMeasure ? PreciseJson(entry.rms) : PreciseJson()},
                        {"number", entry.number}};
    if (entry.pin)
        json["pin"] = entry.angles[0];
    if (entry.heightM)
        json["height"] = *entry.heightM;
    return json;
}

PreciseJson jsonOf(const std::vector<Ranked>& best)
{
    PreciseJson list = PreciseJson::array();
    for (const Ranked& entry : best)
        list.push_back(jsonOf(entry));
    return list;
}

/// The set that the options ask for; an error when no box of the file's array aims at an area.
Result<CandidateSet> candidatesOf(const Options& options, const Project& project,
                                  const SearchChoice& choice)
{
    if (choice.freedom.pins && !project.array.GBGetMounting())
        return Error{"a stack hangs from no pin that could be free", options.file};
    const std::optional<JointRange> joints = aimingJoints(project, choice.areas);
    if (!joints)
        return Error{std::string(MlGetString(options.common.text().language, Text::NoBoxAims)),
                     options.file};
    CandidateSet candidates = searchedSet(project.array, *joints, choice);
    if (!candidates.NumConfigs())
        return Error{"there are more configurations than 64 bits can count; narrow the set",
                     options.file};
    if (options.search.from.value_or(0) >= *candidates.NumConfigs())
        return Error{"there are only " + std::to_string(*candidates.NumConfigs()) +
                         " configurations",
                     options.file};
    return candidates;
}

/// What a search found, as far as it came.
struct Found {
    SearchPart part;               ///< of the given order; of a quick search all that it measured
    std::uint64_t tested = 0;      ///< in any order
    std::vector<Ranked> bestSoFar; ///< of these, where the part is less
    std::uint64_t wanted = 0;
    bool interrupted = false;
};

/// Both without repetition.
std::vector<Ranked> joined(std::vector<Ranked> found, const std::vector<Ranked>& others)
{
    for (const Ranked& other : others)
        if (std::none_of(found.begin(), found.end(),
                         [&](const Ranked& entry) { return entry.number == other.number; }))
            found.push_back(other);
    return Ranking::of(std::move(found)).best();
}

SearchPart firstAlone(const std::shared_ptr<const SearchTask>& task, const CandidateSet& candidates)
{
    Search search(task, candidates, 0, 1);
    while (!search.advance(1, [] { return false; })) {
    }
    return {0, 1, search.decide().best()};
}

/// What is proved of the best so far: as long as some are left, only that no measure is below 0.
std::string proofOf(const Search& search, const std::vector<Ranked>& quick)
{
    const std::vector<Ranked> best = joined(search.bestSoFar().best(), quick);
    if (best.empty() || best.front().rms >= kNoMeasure)
        return {};
    const std::string rms = fixedText(best.front().rms, 4) + " dB";
    return search.finished() ? "best " + rms + ", proved"
                             : "best " + rms + ", at least 0 dB, gap 100 %";
}

Found searchExhaustively(const Options& options, const std::shared_ptr<const SearchTask>& task,
                         const CandidateSet& candidates, const Console& console)
{
    const std::uint64_t first = options.search.from.value_or(0);
    std::uint64_t count = *candidates.NumConfigs() - first;
    count = std::min(count, options.search.count.value_or(count));
    count = std::min(count, options.search.limit.value_or(count));
    const bool whole =
        !options.search.from && !options.search.count && count == *candidates.NumConfigs();
    Search search(task, candidates, first, count);
    std::vector<Ranked> quick;
    // Of a whole search only its end is seen, so it may begin where the quick one has ended.
    if (whole && count > QuickSearch::kWorthALook) {
        const Ranking ranking = quickSearch(task, candidates, Interruption::came).ranking;
        search.expect(ranking.limit());
        quick = ranking.best();
    }
    // A part ends after a block, which takes a moment: so it has no gap, and is never empty.
    std::function<bool()> stop = Interruption::came;
    if (!whole) {
        search.keepGivenOrder();
        stop = [] { return false; };
    }
    ProgressBar bar(console.err, console.errIsTerminal || options.common.progress,
                    "Testing configurations", "configurations");
    do {
        search.advance(options.common.threads, stop);
        bar.update(search.tested(), count, proofOf(search, quick));
    } while (!search.finished() && !Interruption::came());
    Found found{
        {first, search.tested(), search.decide().best()}, search.tested(), {}, count, false};
    found.interrupted = !search.finished();
    if (whole && found.interrupted) {
        // What was tested is no part; of that only the first configuration is certain.
        SearchPart certain = firstAlone(task, candidates);
        found.bestSoFar = joined(found.part.best.empty() ? certain.best : found.part.best, quick);
        found.part = std::move(certain);
    }
    return found;
}

Found searchQuickly(const Options& options, const std::shared_ptr<const SearchTask>& task,
                    const CandidateSet& candidates, const Console& console, PreciseJson& result)
{
    const std::uint64_t wanted =
        std::min(options.search.limit.value_or(QuickSearch::kBudget), *candidates.NumConfigs());
    ProgressBar bar(console.err, console.errIsTerminal || options.common.progress,
                    "Testing configurations", "configurations");
    QuickSearch search(task, candidates, wanted);
    bool found = false; // something to print, when a signal comes
    const bool ended = search.advance([&] { return found && Interruption::came(); },
                                      [&](const QuickResult& better) {
                                          found = true;
                                          bar.update(better.evaluations, wanted);
                                      });
    const QuickResult quick = *search.result([] { return false; });
    bar.update(quick.evaluations, quick.evaluations);
    result["evaluations"] = quick.evaluations;
    result["proved"] = quick.proved;
    return {{0, quick.evaluations, quick.ranking.best()}, quick.evaluations, {}, wanted, !ended};
}

Result<Done> optimize(const Options& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {}); !apart)
        return apart;
    Result<OpenProject> state =
        openForPrediction(options.file, options.common, options.prediction, console);
    if (!state)
        return state.error();
    const SearchChoice choice = options.search.choice(options.prediction.choice());
    for (const WeightedArea& area : choice.areas)
        if (area.number > state->project.room.GIGetNumAreas())
            return noSuchArea(area.number, options.file);
    const Result<CandidateSet> candidates = candidatesOf(options, state->project, choice);
    if (!candidates)
        return candidates.error();
    const auto task = withKernel(searchTask(*state, state->project, choice));

    const Clock::time_point start = Clock::now();
    PreciseJson counts = PreciseJson::object();
    Found found = [&] {
        const Interruption interruption;
        return options.search.quick ? searchQuickly(options, task, *candidates, console, counts)
                                    : searchExhaustively(options, task, *candidates, console);
    }();
    const std::chrono::duration<double> seconds = Clock::now() - start;
    for (std::vector<Ranked>* list : {&found.part.best, &found.bestSoFar})
        for (Ranked& entry : *list)
            entry.pin = candidates->freedom().pins;
    PreciseJson result = {
        {"task", searchFingerprint(*task, *candidates, choice.areas.front().number)},
        {"configurations", *candidates->NumConfigs()},
        {"tested", found.part.tested},
        {"first", found.part.first}};
    result.update(counts);
    result["range"] = {candidates->range().first, candidates->range().last};
    result["best"] = jsonOf(found.part.best);
    if (!found.bestSoFar.empty())
        result["bestSoFar"] = jsonOf(found.bestSoFar);
    result["original"] = {{"angles", state->project.array.GIAGetAllAngle()}};
    result["configurationsPerSecond"] =
        static_cast<double>(found.tested) / std::max(seconds.count(), 1e-9);
    addWarnings(result, state->contradictions);

    PendingFiles files;
    if (found.interrupted) {
        if (auto printed = deliver(console, jsonText(result), files); !printed)
            return printed;
        return Error{"interrupted after " + std::to_string(found.tested) + " of " +
                         std::to_string(found.wanted) + " configurations",
                     options.file};
    }
    if (!options.outFile.empty()) {
        state->project.array =
            withConfiguration(task->array, found.part.best.front().configuration());
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

} // namespace

void addOptimizeCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand(
        "optimize", "search the splay angles that cover an audience area most evenly");
    command->footer(
        R"(Interrupted (SIGINT, SIGTERM), it prints what it found so far and ends with status 1;
--out is not written; a second signal ends it at once. With --from, --count or a --limit that
leaves some out, the result is the part from "first" on: go on with --from first + tested and join
both with --merge. A search of all tests in an order of its own, often faster, of which such a part
holds the first configuration only; what it found is in "bestSoFar". Give --from 0 where a search of
all may be interrupted and is to go on.)");
    const auto options = std::make_shared<Options>();
    command->add_option("project", options->file, "the project")
        ->check(fileName())
        ->type_name("PROJECT.lad");
    addSearchOptions(*command, options->search);
    command->add_option("--out", options->outFile, "save the project with the best angles")
        ->check(fileName())
        ->type_name("FILE");
    command
        ->add_option(
            "--merge", options->merge,
            "join the results of parts of one search; parts whose tasks differ are refused")
        ->check(fileName())
        ->type_name("FILE...");
    addPredictionOptions(*command, options->prediction);
    addCommonOptions(*command, options->common);
    addExample(*command, "theatre.lad --area 2 --quick --out better.lad");
    command->callback([options, &work] {
        const SearchOptions& search = options->search;
        const bool joins = !options->merge.empty();
        if (joins ? !options->file.empty() : options->file.empty())
            throw CLI::ValidationError("optimize", joins ? "--merge takes results, no project"
                                                         : "PROJECT.lad is required");
        if (!joins)
            checkSearch(search);
        if (search.quick && (search.from.value_or(0) > 0 || search.count))
            throw CLI::ValidationError("--quick", "tests no part of the order: no --from, --count");
        if (!search.fitLine.empty() && search.fitLine[1] <= 0)
            throw CLI::ValidationError("--fit-line", "the length must be above 0");
        work = [options, joins](const Console& console) {
            return joins ? merge(options->merge, console) : optimize(*options, console);
        };
    });
}

} // namespace orva
