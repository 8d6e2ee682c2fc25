#include "drawing/aiming_drawing.h"
#include "drawing/array_drawing.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_drawing.h"
#include "drawing/scale.h"
#include "drawing/spl_map_drawing.h"
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

TEST(RoomDrawing, SaysWhatIsSilentAndLeavesAGridThatIsTooFine)
{
    Project project = newProject(kStandardSystem);
    ASSERT_TRUE(project.room.GBSetPointOfRef(FloatPair{2, 1}));
    RecordingSurface surface(600, 300);
    GDrawRoomBasic(surface, project.room, {}, true);
    surface.calls.clear();
    LabelPlaces labels(surface);
    drawFohLevel(labels, project.room, kSilence, true);
    EXPECT_EQ(surface.texts().at(0), "- dB(A)");
    surface.calls.clear();
    GDrawRoomBasic(surface, project.room, {{}, 0.01F, 1, 1}, true);
    EXPECT_TRUE(surface.all("line", kGridGrey).empty());
    EXPECT_EQ(surface.texts().front(), "Y") << "no unit of a grid that is too fine to draw";
    const auto reference = std::find_if(surface.calls.begin(), surface.calls.end(),
                                        [](const auto& call) { return call.text == "  <-Ref"; });
    ASSERT_NE(reference, surface.calls.end());
    expectAt(reference->points[0], 0, -0.01 * surface.scale().height);
}

TEST(RoomDrawing, ADevicePixelIsAPartOfAPixel)
{
    const Room room = newProject(kStandardSystem).room; // 30 m x 8 m with a margin of 30 pixels
    const double perPixel = 30 * (1 + 30.0 / 600) / 600;
    for (const double ratio : {1.0, 1.5, 2.0}) {
        const Size pixel = devicePixel(room, 600, 400, ratio);
        EXPECT_NEAR(pixel.width, perPixel / ratio, 1e-9);
        EXPECT_NEAR(pixel.height, perPixel / ratio, 1e-9);
    }
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
        RenderSPLMap(surface, project.room, grid, map, {{}, map.max, {}});
        EXPECT_EQ(surface.cellColours.at(0), colour) << level;
        EXPECT_EQ(surface.columnEdges.size(), 34U);
        EXPECT_EQ(surface.columnEdges.front(), 0);
        EXPECT_NEAR(surface.columnEdges[1], 0.35, kMetres); // margin and cell
        EXPECT_EQ(surface.columnEdges.back(), 10);
        EXPECT_NEAR(surface.rowEdges.front(), -3, kMetres);
        EXPECT_NEAR(surface.rowEdges.back(), 0, kMetres);
        EXPECT_GE(surface.texts().size(), 2U) << "the bar";
        DrawMapLegend(surface, map, {});
        EXPECT_EQ(surface.texts()[surface.texts().size() - 4], "Max:");
    }
}

TEST(CurveDrawing, ScalesToTens)
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
    EXPECT_EQ(curvePoints(surface.pixelWidth()), 266);
    CurvePicture picture{2, 10, {{{95, 96, kSilence, 97}}}, FitLine{{0, 91}, {10, 92}}};
    DrawCurves(surface, picture, {});
    for (const CurvePoint place : {CurvePoint{0, 91}, {10, 92}, {3.7, 88}}) {
        const CurvePoint back = picture.placeAt(picture.pointAt(place, 600), 600);
        EXPECT_NEAR(back.alongM, place.alongM, 1e-9);
        EXPECT_NEAR(back.levelDb, place.levelDb, 1e-9);
    }
}

TEST(CurveDrawing, OnePointForEveryTwoPixelsOfAProfile)
{
    EXPECT_EQ(profilePoints(0.05, {0, 0, 0, 0, 0, 10}), 101);
    EXPECT_EQ(profilePoints(0.05, {0, 0, 0, 0, 0, 0}), 1);
    EXPECT_EQ(profilePoints(0.05, {0, 0, 0, 0, 0, 5e29F}), 8192) << "bounded, whatever was typed";
}

TEST(CurveDrawing, ProfilesLieLeftOfTheirAreas)
{
    Project project = newProject(kStandardSystem);
    ASSERT_TRUE(project.room.GBSetAudienceArea1(SegmentFigures{5, 1, 15, 1, 0, 10}));
    ASSERT_TRUE(project.room.GBSetAudienceArea2(SegmentFigures{5, 1, 5, 11, 90, 10}));
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
    LabelPlaces labels(surface);
    DrawAimingLines(surface, lines, {true, {1, 0}, false}, 344, {}, labels);
    const auto blue = surface.all("line", kBlue);
    ASSERT_EQ(blue.size(), 4U) << "the first one in the legend";
    expectAt(blue[3].points[1], 120, -5);
    const auto texts = surface.texts();
    EXPECT_EQ(texts, (std::vector<std::string>{"aims at no area", "aims at an area", "10m   29ms",
                                               "10m   29ms"}))
        << "the third one ends far beside the picture";
    expectAt(surface.all("rectangle", kBlack).at(0).points[0], 0.6, -1.1);

    surface.calls.clear();
    LabelPlaces others(surface);
    DrawAimingLines(surface, lines, {true, {1, 0}, true}, 344, {Language::English, false}, others);
    EXPECT_EQ(surface.texts().at(2), "-3ms"); // 9 m from the bass box, 10 m from the array
}

TEST(Labels, StandAtTheirPointOrNearItWithALine)
{
    RecordingSurface surface(600, 300);
    surface.setScale({0, 0, 600, 300});
    LabelPlaces labels(surface);
    labels.occupy({400, 0}, {600, 100});
    // Free, taken, at the right edge, below the lower one, in what is kept free, many at one place.
    const std::vector<Point> points = {{50, 50}, {50, 50}, {595, 150}, {300, 299}, {500, 50}};
    for (const Point& point : points)
        labels.print(point, "123m   45ms");
    for (int i = 0; i < 30; ++i)
        labels.print({200, 150}, "123m   45ms");
    const Point size = surface.textSize("123m   45ms");
    std::vector<Point> placed;
    for (const auto& call : surface.calls)
        if (call.what == "text") {
            const Point at = call.points[0];
            EXPECT_GE(at.x, 0);
            EXPECT_LE(at.x + size.x, 600);
            EXPECT_GE(at.y, 0);
            EXPECT_LE(at.y + size.y, 300);
            EXPECT_FALSE(at.x + size.x > 400 && at.y < 100) << "kept free";
            for (const Point& other : placed)
                EXPECT_TRUE(std::abs(other.x - at.x) >= size.x - 1e-9 ||
                            std::abs(other.y - at.y) >= size.y - 1e-9);
            placed.push_back(at);
        }
    ASSERT_EQ(placed.size(), points.size() + 30);
    expectAt(placed[0], 50, 50);
    EXPECT_LE(std::abs(placed[1].x - 50) + std::abs(placed[1].y - 50), size.x) << "beside it";
    // Who had to move farther is joined to its point.
    std::size_t joined = 0;
    for (const auto& call : surface.calls)
        joined += call.what == "line" && call.points[0].x == 200 && call.points[0].y == 150;
    EXPECT_GE(joined, 20U);
}

TEST(MapDrawing, TheNumbersOfTheBarAreWhole)
{
    const Project project = newProject(kStandardSystem);
    const MapGrid grid = *PrepareMapGrid(project.room, 1, 1);
    for (const double width : {317.0, 600.0, 641.0, 1280.0})
        for (const float least : {60.F, 93.F, 94.F, 99.5F}) {
            SCOPED_TRACE(std::to_string(width) + " " + std::to_string(least));
            const SummedMap map{std::vector<float>(grid.cells(), 100.F), 100, least};
            RecordingSurface surface(width, 300);
            GRoomSetup(surface, project.room);
            RenderSPLMap(surface, project.room, grid, map, {{}, map.max, {}});
            std::string last;
            double end = 0;
            for (const auto& call : surface.calls)
                if (call.what == "text") { // in pixels
                    EXPECT_GE(call.points[0].x, end);
                    end = call.points[0].x + 6.0 * static_cast<double>(call.text.size());
                    last = call.text;
                }
            EXPECT_LE(end, width);
            EXPECT_GE(std::stoi(last), 100) << "the largest level has its number";
        }
}

TEST(TriangleDrawing, StaysWithinItsPicture)
{
    RecordingSurface surface(600, 300);
    DrawTriangle(surface, 3 * std::sqrt(2.0), 3, 3, {});
    expectAt(surface.all("line", kBlue).at(0).points[1], 3, -3);
    EXPECT_NEAR(surface.all("arc", kBlack).at(0).points[1].x, 90, 1e-3);
    for (const double side1 : {0.2, 8.0, 14.0, 15.999, 16.0}) { // an arc of up to 180°
        SCOPED_TRACE(side1);
        surface.calls.clear();
        DrawTriangle(surface, side1, 8, 8, {});
        const Scale& scale = surface.scale();
        const auto inside = [&](Point from, Point to) {
            EXPECT_GE(from.x, scale.left);
            EXPECT_GE(from.y, scale.top);
            EXPECT_LE(to.x, scale.left + scale.width);
            EXPECT_LE(to.y, scale.top + scale.height);
        };
        const double radius = 0.15 * scale.width;
        inside({8 - radius, -radius}, {8 + radius, 0});
        const double pixel = scale.width / surface.pixelWidth();
        for (const auto& call : surface.calls)
            if (!call.text.empty() && call.text != "2") {
                const Point size = surface.textSize(call.text);
                inside(call.points[0],
                       {call.points[0].x + size.x * pixel, call.points[0].y + size.y * pixel});
            }
    }
    DrawTriangle(surface, 20, 8, 8, {{Language::German, true}});
    EXPECT_EQ(surface.texts(), std::vector<std::string>{"Seite 1 > Seite 2 + Seite 3"});
    DrawTriangle(surface, 8, 0, 8, {});
    EXPECT_TRUE(surface.calls.empty());
}

} // namespace
} // namespace orva
