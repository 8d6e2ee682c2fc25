#include "app/forms/suggestions.h"
#include "model/project.h"

#include <random>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr LevelChoice kBroadband = {{0, kBands - 1}, LevelField::Continuous, true};

TEST(Suggestions, HangClearAndNoneBeatsAnotherNorDoesAQuickSearch)
{
    std::mt19937 random(3);
    const auto uniform = [&](double low, double high) {
        return static_cast<float>(std::uniform_real_distribution<>(low, high)(random));
    };
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        Workspace state;
        ASSERT_TRUE(LoadSystemData(state, ORVA_BINARY_DIR "/bin"));
        makeCurrent(state, newProject(system));
        Room& room = state.project.room;
        // Low: only short arrays fit.
        ASSERT_TRUE(room.GBSetRoomDims(FloatPair{30, uniform(4, 5)}) && room.GBSetNumAreas(2) &&
                    room.GBSetPointOfRef(FloatPair{2, 0.5F}) &&
                    room.GBSetAudienceArea1(
                        SegmentFigures{uniform(-1, 4), uniform(0, 1), 0, 0, 0, uniform(5, 15)}));
        std::vector<std::vector<Suggestion>> runs;
        for (const int threads : {1, 3}) {
            Suggesting suggesting(state, state.project, kBroadband, 6000);
            double share = 0;
            suggesting.run(
                threads, [] { return false; }, {},
                [&](double done) {
                    EXPECT_GE(done, share);
                    EXPECT_LE(done, 1);
                    share = done;
                });
            EXPECT_EQ(share, 1);
            runs.push_back(suggesting.found());
        }
        const std::vector<Suggestion>& found = runs[0];
        ASSERT_EQ(found.size(), runs[1].size());
        ASSERT_GT(found.size(), 1U);
        EXPECT_LE(found.size(), Suggesting::kMost);
        SearchChoice choice{
            .areas = {{1, 1}, {2, 1}}, .measure = Measure::Even, .levels = kBroadband};
        for (std::size_t i = 0; i < found.size(); ++i) {
            SCOPED_TRACE(i);
            const LineArray& array = found[i].array;
            EXPECT_EQ(array, runs[1][i].array) << "threads change nothing";
            EXPECT_TRUE(hangsClear(room, array));
            EXPECT_GE(extentOf(room, array).lowest, 2);
            EXPECT_FALSE(array.overloaded() || array.fault());
            EXPECT_GE(array.boxCount(), 4);
            for (const Suggestion& other : found)
                EXPECT_FALSE(other.beats(found[i]));
            Project project = state.project;
            project.array = array;
            const auto task = withKernel(searchTask(state, project, choice));
            const QuickResult quick = quickSearch(
                task, CandidateSet(array, allJoints(array), false), [] { return false; });
            EXPECT_LE(found[i].evenDb, quick.ranking.best().front().rms);
        }
    }
}

TEST(Suggestions, AnArrayOverAnAreaHangsTwoMetresAboveIt)
{
    Project project = newProject(kStandardSystem);
    project.array.GBSetCradleCoord({10, 7.5F});
    const double lowest = extentOf(project.room, project.array).lowest;
    ASSERT_GT(lowest, 3);
    const auto clearOver = [&](float height) {
        const float y = static_cast<float>(lowest) - height;
        EXPECT_TRUE(project.room.GBSetAudienceArea1(SegmentFigures{9, y, 12, y, 0, 3}));
        return hangsClear(project.room, project.array);
    };
    EXPECT_TRUE(clearOver(2.01F));
    EXPECT_FALSE(clearOver(1.99F));
    EXPECT_TRUE(project.room.GBSetAudienceArea1(SegmentFigures{15, 5, 20, 5, 0, 5}));
    EXPECT_TRUE(hangsClear(project.room, project.array)) << "it is not below";
    project.array.GBSetCradleCoord({10, static_cast<float>(7.5 - lowest + 1.9)});
    EXPECT_FALSE(hangsClear(project.room, project.array));
}

} // namespace
} // namespace orva
