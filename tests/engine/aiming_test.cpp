#include "engine/aiming_lines.h"
#include "engine/auto_aim.h"
#include "engine/sub_array_figures.h"
#include "engine/triangle.h"
#include "model/project.h"

#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

Project projectWith(std::vector<std::int16_t> types, std::vector<std::int16_t> angles, bool flown)
{
    Project project = newProject(kStandardSystem);
    types.resize(32);
    angles.resize(32);
    project.array.GBSetAllType(types);
    project.array.GBSetAllAngle(angles);
    project.array.GBSetMounting(flown);
    project.array.GBSetAngleOrPin(false);
    project.array.GFACalcCOM();
    return project;
}

TEST(AutoAim, PointsFlownArraysAtTheNearestAreaInFront)
{
    // the cradle hangs at (1, 7.5)
    const auto down = [](double dx, double dy) { return -std::atan(dy / dx) * 180 / M_PI; };
    const std::tuple<const char*, std::vector<std::int16_t>, float, float, double> cases[] = {
        {"area 1 begins at 5, 1.7", {0, 0}, 5, 18, down(4, 5.8)},
        {"area 3 is nearer", {0, 0}, 5, 3, down(2, 4)},
        {"the lower number on equal distances", {0, 0}, 5, 5, down(4, 5.8)},
        {"at the cradle is not in front", {0, 0}, 1, 18, down(17, 4)},
        {"trapezoidal on top", {1, 0}, 5, 18, down(4, 5.8) + 4.5},
        {"two bass boxes on top", {2, 2, 0}, 5, 18, down(4, 5.8) + 9}};
    for (const auto& [what, types, x1, x3, angle] : cases) {
        Project project = projectWith(types, {0, 2, 4}, true);
        ASSERT_TRUE(project.room.GBSetAudienceArea1(SegmentFigures{x1, 1.7F, 20, 1.7F, 0, 15}));
        ASSERT_TRUE(project.room.GBSetAudienceArea2(SegmentFigures{0.5F, 1.7F, 25, 2, 0, 5}));
        ASSERT_TRUE(project.room.GBSetAudienceArea3(SegmentFigures{x3, 3.5F, 27.4F, 7, 20, 10}));
        const auto aimed = autoAim(project.room, project.array);
        ASSERT_TRUE(aimed) << what;
        EXPECT_NEAR(*aimed, angle, 1e-4) << what;
    }
    Project lowest = projectWith({2, 2, 0}, {0, 2, 4}, true);
    const auto amongOthers = autoAim(lowest.room, lowest.array);
    lowest.array.GBSetNumSpeakers(3);
    EXPECT_EQ(autoAim(lowest.room, lowest.array), amongOthers);
    Project behind = projectWith({0}, {}, true);
    behind.array.GBSetCradleCoord({40, 7.5F});
    EXPECT_FALSE(autoAim(behind.room, behind.array));
}

TEST(AutoAim, PointsStackedArraysAtTheEndOfTheLastArea)
{
    const Project project = projectWith({2, 0}, {0, 1}, false);
    const auto sources = project.array.GFAGetOriginPTSandAng(true);
    const double dx = 27.4 - sources[1];
    const double dy = 6.93 - 0.1 - sources[33];
    EXPECT_NEAR(*autoAim(project.room, project.array), std::atan(dy / dx) * 180 / M_PI + 1.5, 1e-4);
    EXPECT_FALSE(
        autoAim(project.room, projectWith(std::vector<std::int16_t>(12, 2), {}, false).array));
}

TEST(SubArray, VirtualDistancesAndDelays)
{
    const std::tuple<float, float, double, double> cases[] = {
        // position, opening angle, virtual distance, delay at 340 m/s
        {-3, 90, 3, 8.82},
        {3, 90, 3, 8.82},
        {5, 0, 0, 0},
        {0, 45, 0, 0},
        {2, 270, 2, 5.88}};
    for (const auto& [position, angle, distance, delay] : cases) {
        SubArray subArray;
        subArray.SubPos[4] = position;
        subArray.openingAngleDeg = angle;
        const SubArrayFigures figures = subArrayFigures(subArray, 340);
        EXPECT_DOUBLE_EQ(figures.virtualDistance[4], distance);
        EXPECT_DOUBLE_EQ(figures.delay[4], delay);
        EXPECT_NEAR(subArrayFigures(subArray, 340, 3.28084).virtualDistance[4], distance,
                    0.005 / 3);
        EXPECT_DOUBLE_EQ(subArrayFigures(subArray, 340, 3.28084).delay[4], delay);
    }
    SubArray straight;
    straight.openingAngleDeg = 180;
    EXPECT_GT(subArrayFigures(straight, 340).virtualDistance[0], 1e6);
    EXPECT_EQ(openingAngle(-10), 0);
    EXPECT_EQ(openingAngle(300), 270);
    EXPECT_DOUBLE_EQ(openingAngle(45.126), 45.13);
}

TEST(AimingLines, EndAtWhatTheyMeetFirst)
{
    const auto lineOf = [](FloatPair cradle, std::int16_t tenthsDown, const SegmentFigures& area) {
        Project project = projectWith({0}, {tenthsDown}, false);
        project.array.GBSetNumSpeakers(1);
        project.array.GBSetCradleCoord(cradle);
        EXPECT_TRUE(project.room.GBSetNumAreas(1) && project.room.GBSetAudienceArea1(area));
        return aimingLines(project.room, project.array).at(0);
    };
    const SegmentFigures flat = {5, 1, 25, 1, 0, 20};
    const SegmentFigures upright = {10.75F, 0, 10.75F, 6, 90, 6};
    const std::tuple<const char*, FloatPair, std::int16_t, SegmentFigures, double, bool> cases[] = {
        {"upright area 10 m ahead", {1, 3}, 0, upright, 10, true},
        {"over the upright area, to the wall", {1, 7}, 0, upright, 29.25, false},
        {"level above the flat area, to the wall", {1, 3}, 0, flat, 29.25, false},
        {"up, to the ceiling", {1, 3}, -900, flat, 8 - 2.75, false},
        {"outside the room", {1, 20}, 0, flat, 2, false},
        {"the area lies behind", {28, 3}, 0, upright, 2.25, false}};
    for (const auto& [what, cradle, down, area, length, meets] : cases) {
        const AimingLine line = lineOf(cradle, down, area);
        EXPECT_NEAR(line.lengthM, length, 1e-4) << what;
        EXPECT_EQ(line.meetsArea, meets) << what;
        EXPECT_NEAR(std::hypot(line.to.x - line.from.x, line.to.y - line.from.y), length, 1e-4);
    }
    const AimingLine steep = lineOf({1, 5}, 300, flat);
    EXPECT_TRUE(steep.meetsArea);
    EXPECT_NEAR(steep.to.y, 1, 1e-4);
    EXPECT_NEAR(bassBoxDelayMs({{0, 3}, {4, 0}, 5, true}, {0, 0}, 340), -1000.0 / 340, 1e-9);
}

TEST(AutoAim, AnAreaThatStartsAtTheCradleIsNotInFront)
{
    Project project = projectWith({0}, {0}, true);
    const auto aimAt = [&](float cradleX, float areaX) {
        project.array.GBSetCradleCoord({cradleX, 5});
        EXPECT_TRUE(project.room.GBSetNumAreas(1));
        EXPECT_TRUE(
            project.room.GBSetAudienceArea1(SegmentFigures{areaX, 1, areaX + 10, 1, 0, 10}));
        return autoAim(project.room, project.array).has_value();
    };
    const float feet = static_cast<float>(23.5 * 0.3048);
    EXPECT_FALSE(aimAt(feet, feet));
    EXPECT_FALSE(aimAt(feet, std::nextafter(feet, 100.F))) << "the same, typed elsewhere";
    EXPECT_FALSE(aimAt(5, 5.0004F));
    EXPECT_TRUE(aimAt(5, 5.001F));
}

TEST(Triangle, AnglesAndFaults)
{
    const std::tuple<double, double, double, double> angles[] = {{14, 8, 8, 57.91},
                                                                 {3 * std::sqrt(2.0), 3, 3, 90},
                                                                 {16, 8, 8, 0},
                                                                 {5, 8, 3, 180},
                                                                 {4, 0, 4, 0},
                                                                 {0, 5, 5, 180},
                                                                 {1e300, 1e300, 1e300, 120},
                                                                 {1e-300, 1e-300, 1e-300, 120},
                                                                 {5, 1e300, 1e300, 180}};
    for (const auto& [side1, side2, side3, angle] : angles) {
        const auto solved = SolveTriangle(side1, side2, side3);
        ASSERT_TRUE(std::holds_alternative<float>(solved));
        EXPECT_NEAR(std::get<float>(solved), angle, 0.005) << side1;
    }
    EXPECT_EQ(std::get<TriangleFault>(SolveTriangle(20, 8, 8)), TriangleFault::Side1TooLong);
    EXPECT_EQ(std::get<TriangleFault>(SolveTriangle(1, 8, 3)), TriangleFault::Side1TooShort);
}

} // namespace
} // namespace orva
