#include "drawing/aiming_drawing.h"
#include "drawing/array_drawing.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_drawing.h"
#include "drawing/scale.h"
#include "drawing/spl_map_drawing.h"
#include "drawing/sub_array_drawing.h"
#include "drawing/triangle_drawing.h"
#include "model/project.h"
#include "recording_surface.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr double kMetres = 1e-4;
constexpr float kSilence = -std::numeric_limits<float>::infinity();

void expectAt(Point point, double x, double y)
{
    EXPECT_NEAR(point.x, x, kMetres);
    EXPECT_NEAR(point.y, y, kMetres);
}

TEST(Scale, FitsWithTheSameUnitsBothWays)
{
    const std::tuple<double, double, double, double> cases[] = {
        // wanted width and height, user width and height on 600 x 300
        {30, 8, 30, 15},
        {4, 8, 16, 8},
        {20, 10, 20, 10}};
    for (const auto& [wanted, high, width, height] : cases) {
        RecordingSurface surface(600, 300);
        FitScale(surface, wanted, high);
        EXPECT_DOUBLE_EQ(surface.scale().width, width);
        EXPECT_DOUBLE_EQ(surface.scale().height, height);
    }
}

TEST(Scale, GridRunsThroughItsOriginButNotOnTheFirstEdges)
{
    RecordingSurface surface(600, 300);
    surface.setScale({0, -5, 20, 10});
    DrawGrid(surface, {0, 0}, 5, {});
    std::vector<double> x;
    std::vector<double> y;
    for (const auto& line : surface.calls)
        (line.points[0].x == line.points[1].x ? x : y)
            .push_back(line.points[0].x == line.points[1].x ? line.points[0].x : line.points[0].y);
    EXPECT_EQ(x, (std::vector<double>{5, 10, 15, 20}));
    EXPECT_EQ(y, (std::vector<double>{0, 5}));
    surface.calls.clear();
    DrawGrid(surface, {0, 0}, 10, {Language::English, false});
    EXPECT_NEAR(surface.calls.back().points[0].x, 6 * 3.048, 1e-9);
    surface.calls.clear();
    DrawGrid(surface, {0, 0}, 1e-9, {});
    EXPECT_TRUE(surface.calls.empty());
}

TEST(RoomDrawing, WallsAreasAndFohLieWhereTheyAre)
{
    Project project = newProject(kStandardSystem);
    ASSERT_TRUE(project.room.GBSetPointOfRef(FloatPair{2, 1}));
    RecordingSurface surface(600, 300);
    GDrawRoomBasic(surface, project.room, {}, true);
    const auto walls = surface.all("rectangle", kBlack);
    ASSERT_EQ(walls.size(), 1U);
    EXPECT_EQ(walls[0].size, 3);
    expectAt(walls[0].points[0], -2, 1);
    expectAt(walls[0].points[1], 28, -7);
    // the room lies in the middle, with a margin of 30 pixels in all where it is tightest
    EXPECT_NEAR((walls[0].points[0].x - surface.scale().left) / surface.pixelX(), 15, 1);
    const auto black = surface.all("line", kBlack);
    expectAt(black.at(0).points[0], 5, -1.7);
    expectAt(black.at(2).points[1], 27.4, -6.93);
    const auto foh = surface.all("line", kRed);
    expectAt(foh.back().points[0], 20, -2.5);
    expectAt(foh.back().points[1], 20.5, -2.2);
    const auto texts = surface.texts();
    EXPECT_NE(std::find(texts.begin(), texts.end(), "Scale : 5 m"), texts.end());
    surface.calls.clear();
    drawFohLevel(surface, project.room, kSilence, true);
    EXPECT_EQ(surface.texts().at(0), "- dB(A)");
}

TEST(ArrayDrawing, BoxesPinsAndSourcesLieAtTheirGeometry)
{
    for (const bool flown : {true, false}) {
        LineArray array = newProject(kStandardSystem).array;
        array.GBSetMounting(flown);
        array.GFACalcCOM();
        RecordingSurface surface(600, 300);
        surface.setScale({0, -10, 20, 10});
        DrawLineArray(surface, array, {1, -7.5}, true, {});
        const auto sources = array.GFAGetOriginPTSandAng(false);
        const auto marks = surface.all("fill", kRed);
        ASSERT_EQ(marks.size(), 12U);
        for (const std::size_t box : {0U, 5U, 11U})
            expectAt({(marks[box].points[0].x + marks[box].points[1].x) / 2,
                      (marks[box].points[0].y + marks[box].points[1].y) / 2},
                     sources[box], sources[32 + box]);
        const auto pins = surface.all("circle", kRed);
        EXPECT_EQ(pins.size(), flown ? 1U : 0U);
        if (flown) {
            expectAt(pins[0].points[0], 1, -7.5); // the carrying pin hangs at the origin
            const auto plumb = surface.all("line", kBlack);
            expectAt({plumb.at(0).points[0].x, 0}, 1, 0); // the centre of gravity below it
        }
        EXPECT_EQ(surface.all("circle", kBlack).size(), 1U + 11U);
    }
}

TEST(ArrayDrawing, LabelsNeverOverlap)
{
    for (const auto splay : std::initializer_list<std::int16_t>{0, 3, 6})
        for (const double height : {300.0, 1080.0}) {
            LineArray array = newProject(kStandardSystem).array;
            LineArray::Positions types{};
            types.fill(splay == 0 ? 0 : 1);
            LineArray::Positions angles{};
            angles.fill(splay);
            array.GBSetNumSpeakers(24);
            array.GBSetAllType(types);
            array.GBSetAllAngle(angles);
            array.GBSetAngleOrPin(false);
            RecordingSurface surface(height * 2, height);
            DrawRiggingView(surface, array, {});
            std::vector<double> rows;
            for (const auto& call : surface.calls)
                if (call.what == "text" && call.text.rfind("Box ", 0) == 0)
                    rows.push_back(call.points[0].y / surface.pixelY());
            ASSERT_EQ(rows.size(), 24U);
            std::sort(rows.begin(), rows.end());
            EXPECT_GE(rows.front(), -0.01);
            EXPECT_LE(rows.back(), height);
            for (std::size_t i = 1; i < rows.size(); ++i)
                EXPECT_GE(rows[i] - rows[i - 1], 4.9) << splay << ' ' << height;
        }
}

TEST(MapDrawing, CellsReachTheWallsInTheColoursOfTheirLevels)
{
    Project project = newProject(kStandardSystem);
    ASSERT_TRUE(project.room.GBSetRoomDims(FloatPair{10, 3}));
    const MapGrid grid = *PrepareMapGrid(project.room, 0.3F, 1);
    const std::tuple<float, float, Colour> cases[] = {
        // level of the first cell, largest level, colour
        {50, 120, kRed}, {120, 120, kRed}, {85, 90, 0xFFFE00},
        {-75, 5, kRed},  {5, 5, kRed},     {kSilence, 5, kWhite}};
    for (const auto& [level, largest, colour] : cases) {
        SummedMap map{std::vector<float>(99, largest), largest, std::min(level, largest)};
        map.levels[0] = level;
        RecordingSurface surface(600, 300);
        GRoomSetup(surface, project.room);
        RenderSPLMap(surface, project.room, grid, map, {});
        EXPECT_EQ(surface.cellColours.at(0), colour) << level;
        EXPECT_EQ(surface.columnEdges.size(), 34U);
        EXPECT_EQ(surface.columnEdges.front(), 0);
        EXPECT_NEAR(surface.columnEdges[1], 0.35, kMetres); // margin and cell
        EXPECT_EQ(surface.columnEdges.back(), 10);
        EXPECT_NEAR(surface.rowEdges.front(), -3, kMetres);
        EXPECT_NEAR(surface.rowEdges.back(), 0, kMetres);
        EXPECT_GE(surface.texts().size(), 6U); // legend and bar
    }
}

TEST(CurveDrawing, ScalesToTensAndLeavesGaps)
{
    const std::tuple<std::vector<float>, double, double> scales[] = {
        {{91, 99.5F}, 90, 100}, {{90, 100}, 90, 100},     {{95, 95}, 90, 100},
        {{90, 90}, 90, 100},    {{-0.1F, 0.1F}, -10, 10}, {{kSilence, 77}, 70, 80},
        {{kSilence}, 0, 10}};
    for (const auto& [levels, bottom, top] : scales) {
        EXPECT_EQ(CurveScale::of(levels).bottomDb, bottom);
        EXPECT_EQ(CurveScale::of(levels).topDb, top);
    }
    RecordingSurface surface(600, 300);
    EXPECT_EQ(curvePoints(surface), 266);
    const std::vector<float> levels = {95, 96, kSilence, 97};
    const Curve curve = {levels};
    DrawCurves(surface, 2, 10, std::span(&curve, 1), FitLine{{0, -1}, {9, -2}}, {});
    const auto runs = surface.all("polyline", kBlack);
    ASSERT_EQ(runs.size(), 2U);
    expectAt(runs[0].points[1], 2, -6);
    expectAt(runs[1].points[0], 6, -7);
    EXPECT_NEAR(surface.scale().top, -11.1, 1e-9);
    EXPECT_NEAR(surface.scale().height, 13, 1e-9);
    EXPECT_EQ(surface.texts().back(), "Area:   2");
    EXPECT_EQ(surface.all("line", kRed).size(), 1U);
}

TEST(CurveDrawing, OnePointForEveryTwoPixelsOfAProfile)
{
    RecordingSurface surface(600, 300);
    surface.setScale({0, -15, 30, 15}); // 5 cm a pixel
    EXPECT_EQ(profilePoints(surface, {0, 0, 0, 0, 0, 10}), 101);
    EXPECT_EQ(profilePoints(surface, {0, 0, 0, 0, 0, 0}), 1);
    EXPECT_EQ(profilePoints(surface, {0, 0, 0, 0, 0, 5e29F}), 8192)
        << "bounded, whatever was typed";
}

TEST(CurveDrawing, ProfilesLieLeftOfTheirAreas)
{
    Project project = newProject(kStandardSystem);
    ASSERT_TRUE(project.room.GBSetAudienceArea1(AreaSegment{5, 1, 15, 1, 0, 10}));
    ASSERT_TRUE(project.room.GBSetAudienceArea2(AreaSegment{5, 1, 5, 11, 90, 10}));
    RecordingSurface surface(600, 300);
    surface.setScale({0, -15, 30, 15}); // 5 cm a pixel
    DrawProfiles(surface, project.room, std::vector<std::vector<float>>{{60, 80}, {80, 60}});
    const auto profiles = surface.all("polyline", kBlack);
    ASSERT_EQ(profiles.size(), 2U);
    expectAt(profiles[0].points[0], 5, -1 - 2 * 0.05);   // smallest: 2 pixels above
    expectAt(profiles[0].points[1], 10, -1 - 22 * 0.05); // largest: 22
    expectAt(profiles[1].points[0], 5 - 22 * 0.05, -1);  // an area that rises: to its left
    surface.calls.clear();
    DrawProfiles(surface, project.room, std::vector<std::vector<float>>{{70, 70}});
    expectAt(surface.calls.at(0).points[0], 5, -1.1);
}

TEST(AimingDrawing, LinesEndBlueWithFiguresThatNeverOverlap)
{
    const std::vector<AimingLine> lines = {{{0, 5}, {10, 0}, 10, true},
                                           {{0, 5}, {10.01, 0}, 10, true},
                                           {{0, 5}, {240, 5}, 240, true},
                                           {{0, 5}, {0, 3}, 2, false}};
    RecordingSurface surface(600, 300);
    surface.setScale({-5, -10, 30, 15});
    DrawAimingLines(surface, lines, {true, {1, 0}, false}, {20, 2}, 344, {});
    const auto blue = surface.all("line", kBlue);
    ASSERT_EQ(blue.size(), 3U);
    expectAt(blue[2].points[1], 120, -5);
    const auto texts = surface.texts();
    EXPECT_EQ(texts, (std::vector<std::string>{"10m   29ms", "10m   29ms", "240m   698ms"}));
    std::vector<double> y;
    for (const auto& call : surface.calls)
        if (call.what == "text")
            y.push_back(call.points[0].y);
    EXPECT_GE(y[1] - y[0], surface.textSize("1").y - 1e-9);
    expectAt(surface.all("rectangle", kBlack).at(0).points[0], 0.6, -1.1);

    surface.calls.clear();
    DrawAimingLines(surface, lines, {true, {1, 0}, true}, {10, 0.1F}, 344,
                    {Language::English, false});
    EXPECT_EQ(surface.texts().at(0), "-3ms"); // 9 m from the bass box, 10 m from the array
    for (const auto& call : surface.calls)    // below the level at the FOH
        EXPECT_TRUE(call.what != "text" || call.points[0].x > 11 || call.points[0].y >= 0.3);
}

TEST(SmallDrawings, SubArrayAndTriangle)
{
    RecordingSurface surface(600, 300);
    SubArray subArray;
    subArray.openingAngleDeg = 90;
    DrawSubArray(surface, subArray, subArrayFigures(subArray, 344));
    EXPECT_NEAR(surface.scale().width, 2.1 * 9 + 1, 1e-9);
    EXPECT_NEAR(surface.scale().height, 11, 1e-9);
    expectAt(surface.all("fill", kBlack).at(0).points[0], -9.55, -0.2);
    expectAt(surface.all("fill", kBlue).at(0).points[0], -9.55, -9.2);

    DrawTriangle(surface, 3 * std::sqrt(2.0), 3, 3, {});
    expectAt(surface.all("line", kBlue).at(0).points[1], 3, -3);
    EXPECT_NEAR(surface.all("arc", kBlack).at(0).points[1].x, 90, 1e-3);
    DrawTriangle(surface, 20, 8, 8, {{Language::German, true}});
    EXPECT_EQ(surface.texts(), std::vector<std::string>{"Seite 1 > Seite 2 + Seite 3"});
    DrawTriangle(surface, 8, 0, 8, {});
    EXPECT_TRUE(surface.calls.empty());
}

} // namespace
} // namespace orva
