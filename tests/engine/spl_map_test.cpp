#include "engine/literal_kernel.h"
#include "engine/spl_map.h"
#include "model/project.h"

#include <cmath>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

Room roomOf(float width, float height, FloatPair reference = {0, 0})
{
    Room room;
    EXPECT_TRUE(room.GBSetRoomDims(FloatPair{width, height}) && room.GBSetPointOfRef(reference));
    return room;
}

TEST(MapGrid, WholeCellsInTheMiddleOfTheRoom)
{
    const std::tuple<float, float, int, float> cases[] = {// width, cell, columns, margin
                                                          {10, 0.3F, 33, 0.05F},
                                                          {9.9F, 0.3F, 33, 0},
                                                          {30, 0.1F, 300, 0},
                                                          {1, 3, 1, -1},
                                                          {0.5F, 0.5F, 1, 0}};
    for (const auto& [width, cell, columns, margin] : cases) {
        const auto grid = PrepareMapGrid(roomOf(width, 8), cell, cell);
        ASSERT_TRUE(grid);
        EXPECT_EQ(grid->columns, columns);
        EXPECT_NEAR(grid->OffX, margin, 1e-5);
    }
    const auto grid = PrepareMapGrid(roomOf(10, 8, {2, 1}), 0.3F, 0.5F);
    ASSERT_TRUE(grid);
    const Point first = grid->CellCentre(0, 0);
    EXPECT_NEAR(first.x, 0.05 + 0.15 - 2, 1e-5);
    EXPECT_NEAR(first.y, 8 - 0.25 - 1, 1e-5);
    EXPECT_NEAR(grid->CellCentre(32, 15).y, 0.25 - 1, 1e-5);

    EXPECT_TRUE(PrepareMapGrid(roomOf(5000, 4000), 1, 1));
    EXPECT_FALSE(PrepareMapGrid(roomOf(5000, 4001), 1, 1));
    EXPECT_FALSE(PrepareMapGrid(roomOf(30, 8), 1e-30F, 1e-30F));
}

class MapOfNewProject : public testing::Test {
protected:
    const Project project = newProject(kStandardSystem);
    const SpeakerData data = SelectSpeakerData({}, kStandardSystem);
    const LiteralKernel kernel{data.directivity, airAt(21)};
    const MapGrid grid = *PrepareMapGrid(project.room, 1, 1);
    RawSplCache cache;

    bool calculate(BandSpan bands, const Progress& progress = {}, int threads = 1)
    {
        return CalcRawSPL(kernel, project.array, grid, bands, threads, progress, cache);
    }
    std::optional<SummedMap> sum(const LevelChoice& choice, const Progress& progress = {})
    {
        return CalcSummedSPL(cache, data.BandLevel, grid, choice, 1, progress);
    }
};

TEST_F(MapOfNewProject, GivesTheLevelsOfALineThroughItsCells)
{
    const LevelChoice choice{{9, 11}, LevelField::Continuous, true};
    ASSERT_TRUE(calculate(choice.bands));
    const auto map = sum(choice);
    ASSERT_TRUE(map);
    // the row 2.5 m below the ceiling as a line of receivers
    const Point start = grid.CellCentre(0, 2);
    const AreaSegment row = {static_cast<float>(start.x), static_cast<float>(start.y), 0, 0, 0, 30};
    const auto levels = LineSPL(kernel, data.BandLevel, project.array, row, choice, 30);
    for (std::size_t c = 0; c < 30; ++c)
        EXPECT_NEAR(map->levels[60 + c], levels[c], 1e-3) << c;
    EXPECT_EQ(map->max, *std::max_element(map->levels.begin(), map->levels.end()));
    EXPECT_EQ(map->min, *std::min_element(map->levels.begin(), map->levels.end()));
}

TEST_F(MapOfNewProject, OnlyMissingBandsAreCalculatedAndThreadsGiveTheSameBits)
{
    ASSERT_TRUE(calculate({10, 10}));
    cache.RawSpl[10][0] = 123; // a mark that must stay
    ASSERT_TRUE(calculate({8, 12}, {}, 3));
    EXPECT_EQ(cache.RawSpl[10][0], 123);
    RawSplCache other;
    ASSERT_TRUE(CalcRawSPL(kernel, project.array, grid, {8, 12}, 1, {}, other));
    EXPECT_EQ(cache.RawSpl[8], other.RawSpl[8]);
    EXPECT_EQ(cache.RawSpl[12], other.RawSpl[12]);
}

TEST_F(MapOfNewProject, AbortingLeavesTheBandsNotDone)
{
    ASSERT_TRUE(calculate({3, 3}));
    int rows = 0;
    EXPECT_FALSE(calculate({3, 5}, [&](int done, int total) {
        EXPECT_EQ(total, grid.rows);
        rows = done;
        return done < 4;
    }));
    EXPECT_EQ(rows, 4);
    EXPECT_TRUE(cache.BandDone[3]);
    EXPECT_FALSE(cache.BandDone[4]);
    ASSERT_TRUE(calculate({3, 5}));
    EXPECT_FALSE(
        sum({{3, 5}, LevelField::Relative, false}, [](int done, int) { return done < 2; }));
}

TEST(MapProgress, PercentOfRows)
{
    const std::tuple<int, int, int> cases[] = {
        {1, 80, 0}, {40, 80, 49}, {80, 80, 100}, {1, 1, 100}, {2, 3, 50}};
    for (const auto& [done, total, percent] : cases)
        EXPECT_EQ(rowPercent(done, total), percent);
}

} // namespace
} // namespace orva
