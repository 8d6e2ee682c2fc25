#include "optimize/quick_search.h"
#include "scene.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace orva {
namespace {

/// The measure of levels along several areas, from its definition.
double joined(const SearchTask& task, const std::vector<std::vector<double>>& levels,
              const std::vector<SearchArea>& areas)
{
    double weights = 0;
    double mean = 0;
    for (std::size_t a = 0; a < areas.size(); ++a) {
        weights += areas[a].weight;
        for (const double level : levels[a])
            mean += areas[a].weight * level / task.points;
    }
    mean /= weights;
    double squares = 0;
    for (std::size_t a = 0; a < areas.size(); ++a) {
        double own = 0;
        if (task.measure == Measure::Even) {
            for (const double level : levels[a])
                own += (level - mean) * (level - mean) / task.points;
        } else {
            const std::vector<float> all(levels[a].begin(), levels[a].end());
            const FitLineTarget& target = areas[a].target;
            const double step = target.lengthM / (task.points - 1) * target.slopeDbPerM;
            const double rms = task.measure == Measure::FitToLine
                                   ? RmsToFitLine(all, fitReference(target, task.points))
                                   : RmsSmooth(all, step);
            own = rms * rms;
        }
        squares += areas[a].weight * own / weights;
    }
    return std::sqrt(squares);
}

/// The rules as they stand: one configuration after the other, the literal kernel alone.
Ranking literalRanking(const Scene& scene, const CandidateSet& candidates, std::uint64_t first,
                       std::uint64_t count)
{
    const SearchTask& task = *scene.task;
    const LiteralKernel kernel(task.speakerData.directivity, task.air);
    std::vector<SearchArea> areas = {{task.area, task.target, task.weight}};
    areas.insert(areas.end(), task.otherAreas.begin(), task.otherAreas.end());
    Ranking ranking;
    for (std::uint64_t number = first; number < first + count; ++number) {
        LineArray array = task.array;
        const Configuration tested = candidates.configurationOf(number);
        const double x = array.GFAGetCradleCoord()[0];
        if (tested.heightM)
            array.GBSetCradleCoord({array.GFAGetCradleCoord()[0], *tested.heightM});
        array.GBSetAllAngle(tested.angles);
        array.GFACalcCOM();
        std::vector<std::vector<double>> all;
        for (const SearchArea& area : areas) {
            const Segment segment = measuredSegment(area.area, area.target);
            const std::vector<float> levels = LineSPL(kernel, task.speakerData.BandLevel, array,
                                                      segment, task.choice, task.points);
            const std::vector<Point> points = lineReceivers(segment, task.points);
            std::vector<double>& own = all.emplace_back();
            for (std::size_t i = 0; i < points.size(); ++i) {
                const double r =
                    std::hypot(points[i].x - x, points[i].y - array.GFAGetCradleCoord()[1]);
                own.push_back(static_cast<double>(levels[i]) -
                              task.perDoublingDb * std::log2(std::max(r, 0.1)));
            }
        }
        const double rms = joined(task, all, areas);
        ranking.add({tested.angles, rms, number, tested.heightM});
        if (number == 0)
            for (int i = 0; i < 2; ++i)
                ranking.add({tested.angles, 10 * rms, 0, tested.heightM});
    }
    return ranking;
}

Ranking searchedRanking(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, std::uint64_t first, std::uint64_t count,
                        int threads)
{
    Search search(task, candidates, first, count);
    while (!search.advance(threads, [] { return false; })) {
    }
    EXPECT_EQ(search.tested(), count);
    EXPECT_LE(search.evaluators(), static_cast<std::size_t>(std::min(threads, kMostThreads)));
    return search.decide();
}

void expectSame(const Ranking& found, const Ranking& wanted)
{
    ASSERT_EQ(found.best().size(), wanted.best().size());
    for (std::size_t i = 0; i < found.best().size(); ++i) {
        EXPECT_EQ(found.best()[i].number, wanted.best()[i].number) << i;
        EXPECT_EQ(found.best()[i].configuration(), wanted.best()[i].configuration()) << i;
        EXPECT_NEAR(found.best()[i].rms, wanted.best()[i].rms, 1e-12) << i;
    }
}

TEST(Search, FindsWhatTheRulesFindOnAnyNumberOfThreads)
{
    Random random(5);
    int threads = 1;
    for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine})
        for (const bool pinMode : {true, false})
            for (const BandSpan bands : {BandSpan{0, 21}, BandSpan{9, 11}, BandSpan{17, 21}}) {
                const Scene scene = randomScene(random, measure, pinMode, bands);
                const CandidateSet candidates(scene.task->array, scene.range, false);
                const std::uint64_t count = *candidates.NumConfigs();
                expectSame(searchedRanking(scene.task, candidates, 0, count, threads),
                           literalRanking(scene, candidates, 0, count));
                threads = threads == 1 ? 2 : threads == 2 ? 16 : 1;
            }
}

/// Every measure, both systems and modes, several areas, free pins and heights.
void compareWithTheRules(unsigned seed, int rounds)
{
    Random random(seed);
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    int threads = 1;
    for (int round = 0; round < rounds; ++round) {
        const auto measure = static_cast<Measure>(round % 3);
        const bool pins = round % 4 < 2;
        Scene scene = randomScene(random, measure, pins || round % 2 == 0, {8, 14});
        auto task = std::make_shared<SearchTask>(*scene.task);
        if (round % 7 == 5) {
            task->array.GBSetArrayType(kCompactSystem);
            task->array.GBSetAllType(LineArray::Positions{});
            task->array.GFACalcCOM();
        }
        task->weight = uniform(0.1, 3);
        for (int other = 0; other < round % 3; ++other) {
            SearchArea area{{{uniform(5, 15), uniform(0, 4)}, {}, uniform(0, 30), uniform(2, 15)},
                            {},
                            uniform(0.1, 3)};
            area.target = FitLineTarget::wholeArea(area.area);
            task->otherAreas.push_back(area);
        }
        if (measure == Measure::Even)
            task->perDoublingDb = round % 2 == 0 ? 0 : uniform(-6, 2);
        Freedom freedom{pins, {}};
        for (int height = 0; height < round % 4; ++height)
            freedom.heightsM.push_back(static_cast<float>(5 + 0.7 * height));
        scene.task = task;
        const CandidateSet candidates(task->array, {2, 3}, round % 5 == 0, freedom);
        const std::uint64_t count = *candidates.NumConfigs();
        const Ranking wanted = literalRanking(scene, candidates, 0, count);
        SCOPED_TRACE(round);
        expectSame(searchedRanking(task, candidates, 0, count, threads), wanted);
        const QuickResult quick = quickSearch(task, candidates, [] { return false; });
        Search expecting(task, candidates, 0, count);
        expecting.expect(quick.ranking.limit());
        while (!expecting.advance(2, [] { return false; })) {
        }
        expectSame(expecting.decide(), wanted);
        EXPECT_LT(quick.ranking.best().front().rms, wanted.best().front().rms * 1.3 + 0.1);
        threads = threads == 1 ? 2 : threads == 2 ? 16 : 1;
    }
}

TEST(Search, SeveralAreasEvenFreePinsAndHeights)
{
    compareWithTheRules(17, 18);
}

/// `make bench-long` runs it.
TEST(Search, DISABLED_TwoHundredRooms)
{
    compareWithTheRules(18, 200);
}

TEST(Search, KeepsTheGivenOrderAmongManyEqualMeasures)
{
    Random random(23);
    for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine, Measure::Even}) {
        Scene scene = randomScene(random, measure, false, {12, 12});
        auto task = std::make_shared<SearchTask>(*scene.task);
        task->points = 9;
        // Two bass boxes below: how they hang is not heard.
        task->array.GBSetAllType(LineArray::Positions{1, 1, 1, 1, 1, 1, 1, 2, 2});
        task->array.GBSetNumSpeakers(7);
        task->array.GBSetNumBass(2);
        task->array.GFACalcCOM();
        ASSERT_FALSE(task->array.fault());
        scene.task = task;
        const CandidateSet candidates(task->array, allJoints(task->array), false);
        const std::uint64_t count = *candidates.NumConfigs();
        ASSERT_GE(count, 4096U);
        ASSERT_LE(count, 20'000U);
        const Ranking wanted = literalRanking(scene, candidates, 0, count);
        ASSERT_EQ(wanted.best()[0].rms, wanted.best()[1].rms);
        for (const int threads : {1, 2, 16})
            expectSame(searchedRanking(task, candidates, 0, count, threads), wanted);
    }
}

TEST(Search, FindsWhatTheRulesFindWhereItLearnsAnOrderFirst)
{
    Random random(9);
    for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine})
        for (const bool pinMode : {true, false}) {
            const Scene scene = randomScene(random, measure, pinMode, {10, 13});
            const CandidateSet candidates(scene.task->array, allJoints(scene.task->array), false);
            const std::uint64_t count = std::min<std::uint64_t>(*candidates.NumConfigs(), 5000);
            ASSERT_GE(count, 4096U) << "fewer are not learned from";
            expectSame(searchedRanking(scene.task, candidates, 0, count, 2),
                       literalRanking(scene, candidates, 0, count));
        }
}

TEST(Search, SilentPlacesAreWorseThanAnyMeasure)
{
    Random random(11);
    Scene scene = randomScene(random, Measure::SmoothArea, true, {20, 20});
    auto task = std::make_shared<SearchTask>(*scene.task);
    task->area = {3000, 0, 12000, 0, 0, 9000}; // the air leaves nothing of the highest bands
    task->target = FitLineTarget::wholeArea(task->area);
    const CandidateSet candidates(task->array, scene.range, false);
    const std::uint64_t count = *candidates.NumConfigs();
    ASSERT_GT(count, 3U);
    const std::vector<Ranked> whole = searchedRanking(task, candidates, 0, count, 2).best();
    ASSERT_EQ(whole.size(), 3U);
    for (const Ranked& entry : whole)
        EXPECT_EQ(std::pair(entry.rms, entry.number), std::pair(kNoMeasure, std::uint64_t{0}));
    const std::vector<Ranked> part = searchedRanking(task, candidates, 1, count - 1, 2).best();
    ASSERT_EQ(part.size(), 3U);
    for (std::uint64_t k = 0; k < 3; ++k)
        EXPECT_EQ(part[k].number, k + 1) << "the first of equals";
    const QuickResult quick = quickSearch(task, candidates, [] { return false; });
    EXPECT_EQ(quick.ranking.best().front().rms, kNoMeasure);
}

TEST(PointOrder, KnowsEveryPointOnceAndNeverClaimsTooMuch)
{
    Random random(10);
    std::normal_distribution<> noise;
    for (const std::size_t count : {2U, 7U, 8U, 9U, 64U, 200U, 1000U}) {
        std::vector<std::vector<double>> samples(20, std::vector<double>(count));
        for (auto& sample : samples)
            for (double& distance : sample)
                distance = noise(random);
        for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine})
            for (const PointOrder& order :
                 {PointOrder::coarseToFine(count), PointOrder::learned(measure, samples)}) {
                std::vector<std::size_t> sorted = order.points;
                std::sort(sorted.begin(), sorted.end());
                ASSERT_EQ(sorted.size(), count);
                EXPECT_EQ(sorted, order.stages.back().known);
                for (std::size_t i = 0; i < count; ++i)
                    EXPECT_EQ(sorted[i], i);
                double before = 0;
                for (const PointOrder::Stage& stage : order.stages) {
                    EXPECT_EQ(stage.known.size(), stage.end);
                    EXPECT_TRUE(stage.end == count || stage.end % PointOrder::kGroup == 0);
                    const double sum = recordOf(measure).sum(samples[0], stage.known);
                    EXPECT_GE(sum, before * (1 - 1e-12));
                    before = sum;
                }
                double exact = 0;
                for (std::size_t i = 0; i < count; ++i) {
                    const bool line = measure == Measure::FitToLine;
                    const double step = line            ? samples[0][i]
                                        : i + 1 < count ? samples[0][i + 1] - samples[0][i]
                                                        : 0;
                    exact += step * step;
                }
                EXPECT_NEAR(before, exact, 1e-9 * exact);
            }
    }
}

TEST(PointOrder, BeginsWhereTheSamplesTell)
{
    std::vector<std::vector<double>> samples(10, std::vector<double>(100, 0.0));
    for (std::size_t s = 0; s < samples.size(); ++s)
        samples[s][57] = 1.0 + static_cast<double>(s);
    EXPECT_EQ(PointOrder::learned(Measure::FitToLine, samples).points.front(), 57U);
    const auto smooth = PointOrder::learned(Measure::SmoothArea, samples).points;
    const std::vector<std::size_t> first(smooth.begin(), smooth.begin() + 3);
    EXPECT_NE(std::find(first.begin(), first.end(), 57U), first.end());
}

TEST(Search, PartsAndPausesChangeNothing)
{
    Random random(6);
    const Scene scene = randomScene(random, Measure::SmoothArea, true, {0, 21});
    const CandidateSet candidates(scene.task->array, scene.range, false);
    const std::uint64_t count = *candidates.NumConfigs();
    ASSERT_GT(count, 20U);
    std::vector<SearchPart> parts;
    for (const auto& [first, end] :
         {std::pair<std::uint64_t, std::uint64_t>{count / 2, count}, {0, 3}, {3, count / 2}}) {
        Search search(scene.task, candidates, first, end - first);
        std::atomic<int> asked = 0;
        std::atomic<int> patience = 1;
        const auto stop = [&] { // again and again, each time later
            const bool now = ++asked > patience;
            if (now) {
                asked = 0;
                ++patience;
            }
            return now;
        };
        std::uint64_t tested = 0;
        double best = kNoMeasure;
        while (!search.finished()) {
            search.advance(2, stop);
            EXPECT_GE(search.tested(), tested) << "nothing that was tested is lost";
            tested = search.tested();
            if (search.bestSoFar().best().empty())
                continue;
            EXPECT_LE(search.bestSoFar().best().front().rms, best + 1e-4);
            best = search.bestSoFar().best().front().rms;
            if (tested % 3 == 0) {
                EXPECT_NEAR(search.decide().best().front().rms, best, 1e-4);
            }
        }
        EXPECT_EQ(tested, end - first) << "each once";
        expectSame(search.decide(), literalRanking(scene, candidates, first, tested));
        parts.push_back({first, search.tested(), search.decide().best()});
    }
    const Result<SearchPart> whole = mergeParts(parts);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->tested, count);
    EXPECT_EQ(whole->best, literalRanking(scene, candidates, 0, count).best());
    parts.pop_back();
    EXPECT_FALSE(mergeParts(parts)) << "a gap";
}

TEST(Search, LevelsThatTellNothingMoreAreSpared)
{
    Random random(14);
    for (const Measure measure : {Measure::SmoothArea, Measure::FitToLine}) {
        const Scene scene = randomScene(random, measure, false, {0, 21});
        auto task = std::make_shared<SearchTask>(*scene.task);
        task->points = 200;
        const CandidateSet candidates(task->array, scene.range, false);
        const std::uint64_t count = *candidates.NumConfigs();
        const Ranking best = searchedRanking(task, candidates, 0, count, 1);
        Evaluator evaluator(task);
        constexpr std::uint64_t kGroups = 200 / PointOrder::kGroup;
        const auto groups = [&](double limit) {
            const std::uint64_t before = evaluator.groupsCalculated();
            for (std::uint64_t number = 0; number < count; ++number)
                evaluator.measureUpTo(candidates.configurationOf(number), limit);
            return evaluator.groupsCalculated() - before;
        };
        EXPECT_EQ(groups(kNoMeasure), kGroups * count);
        EXPECT_LT(groups(best.best().front().rms / 4), kGroups * count * 8 / 10);
        EXPECT_LE(groups(0), 2 * count) << "the first levels tell";
    }
}

TEST(Search, StopsInTheMiddleOfALiteralMeasurement)
{
    Random random(12);
    const Scene scene = randomScene(random, Measure::SmoothArea, true, {20, 20});
    auto task = std::make_shared<SearchTask>(*scene.task);
    task->points = 10000;
    const CandidateSet candidates(task->array, scene.range, false);
    std::atomic<int> asked = 0;
    int patience = 0;
    const auto stop = [&] { return ++asked > patience; };

    EXPECT_FALSE(Evaluator(task).measure(candidates.configurationOf(0), stop));
    EXPECT_EQ(asked, 1);
    patience = 1000000;
    EXPECT_TRUE(Evaluator(task).measure(candidates.configurationOf(0), stop));
    EXPECT_GT(asked, task->points / 500) << "every few hundred points";

    // Nothing that the fast kernel could tell apart: each configuration is a literal measurement.
    task->area = {3000, 0, 12000, 0, 0, 9000};
    task->target = FitLineTarget::wholeArea(task->area);
    for (patience = 20; patience < 200; patience += 60) {
        Search search(task, candidates, 0, *candidates.NumConfigs());
        asked = 0;
        search.advance(2, stop);
        EXPECT_LT(asked, patience + 8) << "threads look once more each";
        EXPECT_FALSE(search.finished());
    }
}

TEST(Search, AQuickSearchGoesOnWhereItWasStopped)
{
    Random random(13);
    const Scene scene = randomScene(random, Measure::SmoothArea, false, {0, 21});
    const CandidateSet candidates(scene.task->array, allJoints(scene.task->array), false);
    const QuickResult whole = quickSearch(scene.task, candidates, [] { return false; });
    QuickSearch paused(scene.task, candidates);
    int left = 0;
    int pauses = 0;
    for (; !paused.advance([&] { return --left < 0; }); ++pauses)
        left = 10;
    EXPECT_GT(pauses, 3);
    EXPECT_FALSE(paused.result([] { return true; }));
    const std::optional<QuickResult> result = paused.result([] { return false; });
    ASSERT_TRUE(result);
    EXPECT_EQ(result->ranking.best(), whole.ranking.best());
    EXPECT_EQ(result->evaluations, whole.evaluations) << "nothing is measured twice";
}

TEST(Search, QuickSearchFindsTheBestOfASmallSet)
{
    Random random(7);
    const Scene scene = randomScene(random, Measure::SmoothArea, false, {0, 21});
    const CandidateSet candidates(scene.task->array, scene.range, false);
    const auto wanted = literalRanking(scene, candidates, 0, *candidates.NumConfigs());
    const QuickResult quick = quickSearch(scene.task, candidates, [] { return false; });
    EXPECT_EQ(quick.ranking.best().front().number, wanted.best().front().number);
    EXPECT_LE(quick.evaluations, *candidates.NumConfigs());
    EXPECT_EQ(quick.proved, quick.evaluations == *candidates.NumConfigs());
    int left = 3;
    EXPECT_LE(quickSearch(scene.task, candidates, [&] { return --left < 0; }).evaluations, 3U);
}

TEST(Search, QuickSearchTriesEveryPlaceOfASingleDigit)
{
    Random random(8);
    const Scene scene = randomScene(random, Measure::Even, false, {0, 21});
    Freedom heights;
    for (int step = 0; step < 400; ++step)
        heights.heightsM.push_back(static_cast<float>(4 + 0.02 * step));
    const CandidateSet candidates(scene.task->array, {}, false, heights);
    ASSERT_EQ(candidates.NumConfigs(), 400U);
    const auto wanted = literalRanking(scene, candidates, 0, 400);
    const QuickResult quick = quickSearch(scene.task, candidates, [] { return false; });
    EXPECT_EQ(quick.ranking.best().front().number, wanted.best().front().number);
}

TEST(Search, ASingleBoxIsOneConfiguration)
{
    LineArray array = newProject(kStandardSystem).array;
    array.GBSetNumSpeakers(1);
    const CandidateSet candidates(array, allJoints(array), false);
    EXPECT_EQ(candidates.NumConfigs(), 1U);
    EXPECT_EQ(candidates.anglesOf(0), array.GIAGetAllAngle());
}

} // namespace
} // namespace orva
