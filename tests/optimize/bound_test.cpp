#include "scene.h"

#include <complex>
#include <numbers>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr auto kNever = [] { return false; };

/// Another random array: of either system, flown or not, with several areas now and then.
Scene varied(Random& random, int round, Measure measure)
{
    const bool pinMode = round % 3 == 0;
    Scene scene =
        randomScene(random, measure, pinMode, round % 2 == 0 ? BandSpan{0, 21} : BandSpan{4, 17});
    auto task = std::make_shared<SearchTask>(*scene.task);
    LineArray& array = task->array;
    if (round % 4 == 1) {
        array.GBSetArrayType(kCompactSystem);
        array.GBSetAllType(LineArray::Positions{});
    }
    if (round % 5 == 4)
        array.GBSetMounting(false);
    if (round % 7 == 3) {
        SearchArea area{{{14, 1}, {}, 10, 9}, {}, 2};
        area.target = FitLineTarget::wholeArea(area.area);
        task->otherAreas.push_back(area);
    }
    array.GFACalcCOM();
    scene.task = task;
    return scene;
}

TEST(Bounds, AmplitudesStayInTheirBalls)
{
    const Directivity data = shipped();
    const AmplitudeBalls balls(data);
    Random random(41);
    const auto amplitude = [&](int band, double degrees) {
        const double step = std::fmod(degrees + 360, 360.0) / 5;
        return std::polar(std::pow(10, -DirMagnitudeAt(data, band, step) / 20),
                          -DirPhaseAt(data, band, step) * std::numbers::pi / 180);
    };
    std::array<double, 2> fullest{};
    for (int round = 0; round < 200'000; ++round) {
        const double degrees = std::uniform_real_distribution<>(0, 360)(random);
        const double within = std::uniform_real_distribution<>(0.1, 20)(random);
        const double turn = std::uniform_real_distribution<>(-within, within)(random);
        const int band = static_cast<int>(random() % kBands);
        const AmplitudeBall::Row& row = balls.within(within)->at(degrees);
        const auto lane = static_cast<std::size_t>(band);
        const auto there = amplitude(band, degrees + turn);
        const double spread = std::abs(there - amplitude(band, degrees)) / row.spread[lane];
        const double largest = std::abs(there) / row.largest[lane];
        fullest = {std::max(fullest[0], spread), std::max(fullest[1], largest)};
    }
    for (const double share : fullest) {
        EXPECT_LE(share, 1);
        EXPECT_GT(share, 0.95);
    }
    EXPECT_FALSE(balls.within(90));
}

/// Nor farther than that: the chains are bent both ways and to their ends.
TEST(Bounds, BoxesStayWithinTheirPlay)
{
    Random random(43);
    int moved = 0;
    double fullest = 0;
    for (int round = 0; round < 60; ++round) {
        const Scene scene = varied(random, round, Measure::Even);
        HungArray hung(scene.task->array);
        const CandidateSet set(hung.array(), allJoints(hung.array()), false);
        const int joints = static_cast<int>(set.joints());
        const int first = joints - 1 - static_cast<int>(random() % 3);
        LineArray::Positions angles = hung.array().GIAGetAllAngle();
        std::vector<double> degrees;
        for (int joint = first; joint < joints; ++joint) {
            const auto [low, high] = set.boundsOf(joint);
            angles[static_cast<std::size_t>(joint) + 1] = low;
            degrees.push_back(LineArray::splayAngle(high) - LineArray::splayAngle(low));
        }
        hung.turn(angles);
        const auto play = hung.play(first, degrees);
        const auto before = hung.axes();
        for (int way = 0; play && way < 100; ++way) {
            for (int joint = first; joint < joints; ++joint) {
                const auto [low, high] = set.boundsOf(joint);
                const int steps =
                    way == 0 ? high - low : static_cast<int>(random()) % (high - low + 1);
                angles[static_cast<std::size_t>(joint) + 1] =
                    static_cast<std::int16_t>(low + std::abs(steps));
            }
            hung.turn(angles);
            for (std::size_t i = 0; i < before.size(); ++i) {
                const auto& now = hung.axes()[i];
                const double away =
                    std::hypot(now.from.x - before[i].from.x, now.from.y - before[i].from.y);
                EXPECT_LE(away, (*play)[i].moveM + (away < 1e-5 ? 1e-5 : 0)) << round << " " << i;
                EXPECT_LE(std::abs(now.angleDeg - before[i].angleDeg), (*play)[i].turnDeg + 1e-5);
                fullest = std::max(fullest, away / ((*play)[i].moveM + 1e-3));
            }
            ++moved;
        }
    }
    EXPECT_GT(moved, 1000);
    EXPECT_GT(fullest, 0.9);
}

TEST(Bounds, NoConfigurationIsBelowThatOfItsUpperJoints)
{
    Random random(31);
    int told = 0;
    int nodes = 0;
    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE(round);
        const Measure measure = round % 2 == 0 ? Measure::FitToLine : Measure::Even;
        const Scene scene = varied(random, round, measure);
        ASSERT_FALSE(scene.task->array.fault());
        const CandidateSet set(scene.task->array, allJoints(scene.task->array), false);
        Evaluator evaluator(scene.task, nullptr,
                            std::make_shared<AmplitudeBalls>(scene.task->speakerData.directivity));
        for (const std::size_t open : {1U, 2U, 3U}) {
            Configuration tested = set.configurationOf(random() % *set.NumConfigs());
            double least = std::numeric_limits<double>::infinity();
            const std::size_t joints = set.joints();
            std::uint64_t below = 1;
            for (std::size_t joint = joints - open; joint < joints; ++joint)
                below *= set.widths()[joint];
            for (std::uint64_t i = 0; i < below; ++i) {
                std::uint64_t rest = i;
                for (std::size_t joint = joints - open; joint < joints; ++joint) {
                    set.turn(tested, joint, rest % set.widths()[joint]);
                    rest /= set.widths()[joint];
                }
                if (const auto bounds = evaluator.measureUpTo(tested, least))
                    least = std::min(least, bounds->high);
            }
            const double all = std::numeric_limits<double>::infinity();
            EXPECT_LE(evaluator.leastMeasure(tested, set, open, all), least) << open;
            ++nodes;
            told += evaluator.leastMeasure(tested, set, open, least / 2) > least / 2 ? 1 : 0;
        }
    }
    EXPECT_GT(told, nodes / 4) << "most bounds tell nothing";
}

/// Parts are tested one by one, whole sets are not: those of the lowest joints of long arrays.
TEST(Bounds, ExcludeNoneOfTheBest)
{
    Random random(37);
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        const Measure measure = round % 2 == 0 ? Measure::FitToLine : Measure::Even;
        const Scene scene = varied(random, 4 * round + 1, measure);
        auto task = std::make_shared<SearchTask>(*scene.task);
        task->array.GBSetNumSpeakers(static_cast<std::int16_t>(8 + random() % 16));
        task->array.GFACalcCOM();
        task->points = std::min(task->points, 12);
        const int lowest = task->array.boxCount() - 2;
        const CandidateSet set(task->array, {lowest - 5, lowest}, false);
        const std::uint64_t count = *set.NumConfigs();
        Search whole(task, set, 0, count);
        Search first(task, set, 0, count - 1);
        Search last(task, set, count - 1, 1);
        for (Search* search : {&whole, &first, &last})
            while (!search->advance(2, kNever)) {
            }
        const auto merged = mergeParts(
            {{0, count - 1, first.decide().best()}, {count - 1, 1, last.decide().best()}});
        ASSERT_TRUE(merged);
        EXPECT_EQ(whole.decide().best(), merged->best);
        EXPECT_EQ(whole.tested(), count);
    }
}

} // namespace
} // namespace orva
