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
}

TEST(MapGrid, TwentyMillionCellsAtMost)
{
    constexpr float kLeast = std::numeric_limits<float>::denorm_min();
    constexpr float kMost = std::numeric_limits<float>::max();
    const std::tuple<const char*, float, float, float, float, int, int> cases[] = {
        // room, cell, columns and rows, 0 where there is no grid
        {"at the edge", 5000, 4000, 1, 1, 5000, 4000},
        {"one row more", 5000, 4001, 1, 1, 0, 0},
        {"one column more", 5001, 4000, 1, 1, 0, 0},
        {"all in one row", 2e7F, 1, 1, 3, 20000000, 1},
        {"one column more of two metres", 2e7F + 2, 1, 1, 3, 0, 0},
        {"all in one column", 1, 2e7F, 3, 1, 1, 20000000},
        {"tiny cells", 30, 8, 1e-30F, 1e-30F, 0, 0},
        {"the smallest cells", kMost, kMost, kLeast, kLeast, 0, 0},
        {"the largest cell", kMost, kMost, kMost, kMost, 1, 1}};
    for (const auto& [what, width, height, cellW, cellH, columns, rows] : cases) {
        SCOPED_TRACE(what);
        const auto grid = PrepareMapGrid(roomOf(width, height), cellW, cellH);
        ASSERT_EQ(grid.has_value(), columns > 0);
        if (!grid)
            continue;
        EXPECT_EQ(grid->columns, columns);
        EXPECT_EQ(grid->rows, rows);
        // the last cell ends as far from the far walls as the first begins from the near ones
        const Point last = grid->CellCentre(columns - 1, rows - 1);
        EXPECT_NEAR(last.x + cellW / 2.0 + grid->OffX, width, 1e-6 * width);
        EXPECT_NEAR(last.y - cellH / 2.0 - grid->OffY, 0, 1e-6 * height);
    }
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
    const Segment row = {start, {}, 0, 30};
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

/// The literal kernel, with what it is asked for counted.
class CountingKernel : public LiteralKernel {
public:
    using LiteralKernel::LiteralKernel;

    void bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                    BandSpan bands, std::span<float* const> powers) const override
    {
        evaluations += sources.size() * receivers.size() * static_cast<std::size_t>(bands.count());
        LiteralKernel::bandPowers(sources, receivers, bands, powers);
    }

    mutable std::size_t evaluations = 0;
};

TEST_F(MapOfNewProject, EachCellAndBandIsCalculatedOnce)
{
    const CountingKernel counting(data.directivity, airAt(21));
    const std::tuple<const char*, BandSpan, std::size_t> steps[] = {
        // what, bands asked for, bands to calculate
        {"one", {10, 10}, 1},       {"the same", {10, 10}, 0}, {"round it", {8, 12}, 4},
        {"among them", {9, 11}, 0}, {"beyond", {11, 14}, 2},   {"all again", {8, 14}, 0}};
    for (const auto& [what, bands, missing] : steps) {
        SCOPED_TRACE(what);
        counting.evaluations = 0;
        int told = 0;
        const auto progress = [&](int, int) { return ++told > 0; };
        ASSERT_TRUE(CalcRawSPL(counting, project.array, grid, bands, 1, progress, cache));
        EXPECT_EQ(counting.evaluations, missing * grid.cells() * 12);
        EXPECT_EQ(told, missing > 0 ? grid.rows : 0);
    }
    // Stopped after four rows, no more than those were calculated.
    counting.evaluations = 0;
    EXPECT_FALSE(CalcRawSPL(
        counting, project.array, grid, {0, 1}, 1, [](int done, int) { return done < 4; }, cache));
    EXPECT_EQ(counting.evaluations, 2 * static_cast<std::size_t>(grid.columns) * 4 * 12);
}

TEST_F(MapOfNewProject, RowsOfAnyLengthToTheirLastCell)
{
    // Cells go to the kernel in pieces of 256.
    for (const int columns : {1, 255, 256, 257, 513}) {
        SCOPED_TRACE(columns);
        const auto wide = PrepareMapGrid(roomOf(static_cast<float>(columns), 3), 1, 1);
        ASSERT_TRUE(wide);
        const CountingKernel counting(data.directivity, airAt(21));
        RawSplCache raw;
        ASSERT_TRUE(CalcRawSPL(counting, project.array, *wide, {9, 9}, 1, {}, raw));
        EXPECT_EQ(counting.evaluations, wide->cells() * 12);
        ASSERT_EQ(raw.RawSpl[9].size(), wide->cells());
        for (const int row : {0, 2})
            for (const int column : {0, columns / 2, columns - 1}) {
                const Point centre = wide->CellCentre(column, row);
                float power = 0;
                float* const to = &power;
                kernel.bandPowers(radiatingSources(project.array), std::span(&centre, 1), {9, 9},
                                  std::span(&to, 1));
                EXPECT_EQ(raw.RawSpl[9][static_cast<std::size_t>(row * columns + column)], power);
            }
    }
}

TEST(SummedMap, ExtremesWhereverTheyLie)
{
    const PerBand<BandReference> levels = SelectSpeakerData({}, kStandardSystem).BandLevel;
    const MapGrid grid = *PrepareMapGrid(roomOf(37, 1), 1, 1);
    for (std::size_t at = 0; at < 37; ++at)
        for (const float power : {100.0F, 0.01F}) { // 20 dB above and below all others
            RawSplCache raw;
            raw.BandDone[5] = true;
            raw.RawSpl[5].assign(37, 1);
            raw.RawSpl[5][at] = power;
            const auto map =
                CalcSummedSPL(raw, levels, grid, {{5, 5}, LevelField::Relative, false}, 1, {});
            ASSERT_TRUE(map);
            EXPECT_EQ(power > 1 ? map->max : map->min, map->levels[at]) << at;
            EXPECT_NEAR(map->max - map->min, 20, 1e-4) << at;
        }
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
    const std::tuple<int, int, int> cases[] = {{1, 80, 0},    {1, 2, 0},   {40, 80, 49},
                                               {80, 80, 100}, {1, 1, 100}, {2, 3, 50}};
    for (const auto& [done, total, percent] : cases)
        EXPECT_EQ(rowPercent(done, total), percent);
}

} // namespace
} // namespace orva
