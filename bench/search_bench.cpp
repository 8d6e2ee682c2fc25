// The search against the literal one (one thread, double precision, every level of every
// configuration), and how soon the quick search finds what the exhaustive one proves to be best.
#include "app/forms/search_setup.h"
#include "optimize/quick_search.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <random>

#include <nlohmann/json.hpp>

namespace {

using namespace orva;

constexpr int kPoints = 200;
constexpr LevelChoice kAllBands = {{0, kBands - 1}, LevelField::Continuous, true};

double seconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

Workspace newState(std::int16_t system)
{
    Workspace state;
    if (!LoadSystemData(state, ORVA_SOURCE_DIR "/data"))
        std::abort();
    makeCurrent(state, newProject(system));
    return state;
}

SearchTask taskOf(const Workspace& state, const FitLineTarget& target, Measure measure)
{
    return searchTask(
        state, state.project,
        {.target = target, .measure = measure, .points = kPoints, .levels = kAllBands});
}

/// Configurations a second over the literal search's, medians of slices in turn.
double ratio(bool pinMode, Measure measure)
{
    Workspace state = newState(kStandardSystem);
    if (!pinMode) {
        LineArray::Positions angles = state.project.array.GIAGetAllAngle();
        angles[0] = 14;
        state.project.array.GBSetAngleOrPin(false);
        state.project.array = withAngles(state.project.array, angles);
    }
    const Segment area = state.project.room.area(1);
    const FitLineTarget target = {0, area.lengthM, 0, measure == Measure::FitToLine ? 106.0 : 0.0};
    const auto task = withKernel(taskOf(state, target, measure));
    const CandidateSet candidates(state.project.array, allJoints(state.project.array), false);
    Search search(task, candidates, 0, *candidates.NumConfigs());
    Evaluator literal(task);
    double fastSeconds = 0;
    std::vector<double> literalSeconds;
    const auto never = [] { return false; };
    while (!search.finished()) {
        fastSeconds += seconds([&] { search.advance(2, never); });
        literalSeconds.push_back(seconds([&] {
                                     for (std::uint64_t i = 0; i < 10; ++i)
                                         literal.measure(
                                             candidates.configurationOf((search.tested() + i * 97) %
                                                                        *candidates.NumConfigs()));
                                 }) /
                                 10);
    }
    fastSeconds += seconds([&] { search.decide(); });
    return median(literalSeconds) / (fastSeconds / static_cast<double>(search.tested()));
}

/// Fraction of the exhaustive search's count until the quick search stands at its best.
double quickFraction(std::mt19937& random)
{
    Workspace state = newState(kCompactSystem);
    const auto uniform = [&](double low, double high) {
        return static_cast<float>(std::uniform_real_distribution<>(low, high)(random));
    };
    LineArray::Positions angles = state.project.array.GIAGetAllAngle();
    angles[0] = static_cast<std::int16_t>(random() % 14);
    for (std::size_t joint = 1; joint < 8; ++joint)
        angles[joint] = static_cast<std::int16_t>(random() % 7);
    state.project.array = withAngles(state.project.array, angles);
    const float rise = uniform(0, 15);
    const float length = uniform(10, 30);
    if (!state.project.room.GBSetAudienceArea1(
            SegmentFigures{uniform(4, 10), uniform(1, 2), 0, 0, rise, length}))
        std::abort();
    const auto task = withKernel(
        taskOf(state, FitLineTarget::wholeArea(state.project.room.area(1)), Measure::SmoothArea));
    const CandidateSet candidates(state.project.array, {1, 6}, false); // 7^6 = 117,649
    const auto never = [] { return false; };
    Search search(task, candidates, 0, *candidates.NumConfigs());
    while (!search.advance(2, never)) {
    }
    const std::uint64_t best = search.decide().best().front().number;
    std::uint64_t foundAfter = 0;
    quickSearch(task, candidates, never, [&](const QuickResult& result) {
        if (result.ranking.best().front().number == best)
            foundAfter = result.evaluations;
    });
    return foundAfter == 0
               ? 1
               : static_cast<double>(foundAfter) / static_cast<double>(*candidates.NumConfigs());
}

/// How far the quick search stays behind the exhaustive one, and how long it takes.
struct Gap {
    bool close; ///< within 0.5 % or 0.002 dB
    bool same;  ///< from five present setups
    double seconds;
};
Gap quickGap(std::mt19937& random, std::int16_t system, std::int16_t boxes, Measure measure)
{
    Workspace state = newState(system);
    LineArray& array = state.project.array;
    const auto uniform = [&](double low, double high) {
        return static_cast<float>(std::uniform_real_distribution<>(low, high)(random));
    };
    array.GBSetNumSpeakers(boxes);
    array.GBSetNumGerade(boxes);
    LineArray::Positions angles{};
    array.GBSetAllType(angles);
    array.GBSetAngleOrPin(false);
    angles[0] = static_cast<std::int16_t>(random() % 40);
    array = withAngles(array, angles);
    const float length = uniform(10, 30);
    if (!state.project.room.GBSetAudienceArea1(
            SegmentFigures{uniform(4, 10), uniform(1, 2), 0, 0, uniform(0, 15), length}))
        std::abort();
    const double level = measure == Measure::FitToLine ? uniform(98, 108) : 0;
    const auto task = withKernel(taskOf(state, {0, length, 0, level}, measure));
    const CandidateSet candidates(array, allJoints(array), false);
    const auto never = [] { return false; };
    Gap gap{true, true, 0};
    QuickResult quick;
    gap.seconds = seconds([&] { quick = quickSearch(task, candidates, never); });
    for (int present = 0; present < 4; ++present) {
        for (std::size_t joint = 1; joint < static_cast<std::size_t>(boxes); ++joint)
            angles[joint] = static_cast<std::int16_t>(
                static_cast<int>(random() % candidates.widthOf(static_cast<int>(joint) - 1)));
        auto other = std::make_shared<SearchTask>(*task);
        other->array = withAngles(array, angles);
        const CandidateSet same(other->array, allJoints(array), false);
        const QuickResult again = quickSearch(other, same, never);
        gap.same = gap.same && again.ranking.best() == quick.ranking.best();
    }
    Search search(task, candidates, 0, *candidates.NumConfigs());
    search.expect(quick.ranking.limit());
    while (!search.advance(2, never)) {
    }
    const double best = search.decide().best().front().rms;
    const double found = quick.ranking.best().front().rms;
    gap.close = found <= best * 1.005 || found <= best + 0.002;
    return gap;
}

/// What a search of an audience area with twelve compact boxes, all joints, does in some seconds
/// on two threads, the quick search before it among them, over the literal rate.
double unfavourable(bool pinMode, Measure measure)
{
    constexpr double kSliceSeconds = 20;
    Workspace state = newState(kCompactSystem);
    LineArray& array = state.project.array;
    array.GBSetNumSpeakers(12);
    array.GBSetNumGerade(12);
    LineArray::Positions angles = array.GIAGetAllAngle();
    for (std::size_t joint = 1; joint < angles.size(); ++joint)
        angles[joint] = static_cast<std::int16_t>(joint / 2 % 7);
    angles[0] = pinMode ? 6 : 14;
    array.GBSetAngleOrPin(pinMode);
    array = withAngles(array, angles);
    const Segment area = state.project.room.area(1);
    const FitLineTarget target = {0, area.lengthM, 0, measure == Measure::FitToLine ? 106.0 : 0.0};
    const auto task = withKernel(taskOf(state, target, measure));
    const CandidateSet candidates(array, allJoints(array), false);
    Search search(task, candidates, 0, *candidates.NumConfigs());
    const auto begin = std::chrono::steady_clock::now();
    const auto stop = [&] {
        return std::chrono::steady_clock::now() - begin >
               std::chrono::duration<double>(kSliceSeconds);
    };
    search.expect(quickSearch(task, candidates, stop).ranking.limit());
    while (!stop())
        search.advance(2, stop);
    const double fast =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count() /
        static_cast<double>(search.tested());
    Evaluator literal(task);
    constexpr std::uint64_t kLiteral = 60;
    const double slow = seconds([&] {
                            for (std::uint64_t i = 0; i < kLiteral; ++i)
                                literal.measure(candidates.configurationOf(i * 30'011));
                        }) /
                        kLiteral;
    return slow / fast;
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape): a benchmark may end so
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    const auto report = [&](const char* name, double value, const char* unit) {
        std::printf("%-24s %10.4f %s\n", name, value, unit);
        std::fflush(stdout);
        list.push_back({{"name", name}, {"value", value}, {"unit", unit}});
    };
    report("search-pin-2t", ratio(true, Measure::SmoothArea), "x literal");
    report("search-angle-2t", ratio(false, Measure::SmoothArea), "x literal");
    report("search-pin-line-2t", ratio(true, Measure::FitToLine), "x literal");
    report("search-angle-line-2t", ratio(false, Measure::FitToLine), "x literal");
    report("search-12-smooth", unfavourable(false, Measure::SmoothArea), "x literal");
    report("search-12-line", unfavourable(false, Measure::FitToLine), "x literal");
    report("search-12-even", unfavourable(false, Measure::Even), "x literal");
    report("search-12-pin-smooth", unfavourable(true, Measure::SmoothArea), "x literal");
    report("search-12-pin-line", unfavourable(true, Measure::FitToLine), "x literal");
    report("search-12-pin-even", unfavourable(true, Measure::Even), "x literal");
    std::mt19937 random(1);
    std::vector<double> fractions;
    fractions.reserve(20);
    for (int room = 0; room < 20; ++room)
        fractions.push_back(quickFraction(random));
    report("quick-evaluations", median(fractions), "of the exhaustive count");
    report("quick-evaluations-worst", *std::max_element(fractions.begin(), fractions.end()),
           "of the exhaustive count");
    int rooms = 0;
    int close = 0;
    int same = 0;
    std::vector<double> taken;
    for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine, Measure::Even})
        for (int room = 0; room < 10; ++room) {
            const bool standard = room % 2 == 0;
            // 4e7 configurations of ten compact boxes take a minute: once for each measure.
            const std::int16_t boxes = room % 4 == 0 || room == 9 ? 10 : 8;
            const Gap gap =
                quickGap(random, standard ? kStandardSystem : kCompactSystem, boxes, measure);
            ++rooms;
            close += gap.close ? 1 : 0;
            same += gap.same ? 1 : 0;
            taken.push_back(gap.seconds);
        }
    report("quick-gap", static_cast<double>(close) / rooms, "of 30 rooms within 0.5 % of the best");
    report("quick-same", static_cast<double>(same) / rooms, "of 30 rooms the same from any setup");
    report("quick-seconds", median(taken), "s, median");
    report("quick-seconds-worst", *std::max_element(taken.begin(), taken.end()), "s");
    if (argc > 1)
        std::ofstream(argv[1]) << list.dump(2) << '\n';
    return 0;
}
