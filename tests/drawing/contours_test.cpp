#include "drawing/contours.h"
#include "model/project.h"
#include "recording_surface.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Contours, LieWhereTheLevelIs)
{
    constexpr int kColumns = 41;
    constexpr int kRows = 31;
    const auto level = [](double x, double y) { return 100 - 0.4 * std::hypot(x - 20, y - 15); };
    std::vector<float> levels;
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kColumns; ++x)
            levels.push_back(static_cast<float>(level(x, y)));
    std::set<int> found;
    for (const ContourPiece& piece : contourPieces(levels, kColumns, kRows, 3)) {
        found.insert(piece.levelDb);
        for (const Point end : {piece.from, piece.to})
            EXPECT_NEAR(level(end.x, end.y), piece.levelDb, 0.15);
        EXPECT_LE(std::hypot(piece.from.x - piece.to.x, piece.from.y - piece.to.y), std::sqrt(2));
    }
    EXPECT_EQ(found, (std::set<int>{93, 96, 99}));

    levels[0] = -INFINITY; // one corner of one square
    for (const ContourPiece& piece : contourPieces(levels, kColumns, kRows, 3))
        EXPECT_TRUE(std::isfinite(piece.from.x) && std::isfinite(piece.to.y));
    EXPECT_TRUE(contourPieces(std::vector<float>(1, 99), 1, 1, 3).empty());
    EXPECT_TRUE(contourPieces(std::vector<float>(12, 99), 4, 3, 3).empty()) << "all the same";
}

TEST(Contours, CarryTheirLevels)
{
    const Project project = newProject(kStandardSystem);
    const MapGrid grid = *PrepareMapGrid(project.room, 0.5F, 0.5F);
    SummedMap map{{}, 110, 80};
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column)
            map.levels.push_back(110 - static_cast<float>(column) / 2);
    RecordingSurface surface(900, 400);
    surface.setScale({0, -8, 30, 8});
    LabelPlaces labels(surface);
    DrawContours(surface, grid, map, LevelColours({}, 110, {}), labels);
    const std::vector<std::string> texts = surface.texts();
    const std::set<std::string> said(texts.begin(), texts.end());
    EXPECT_EQ(said.count("108") + said.count("96") + said.count("84"), 3U);
    EXPECT_FALSE(said.count("107"));
}

} // namespace
} // namespace orva
