#include "model/line_array.h"
#include "model/project.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr double kMetres = 1e-5; // sums of 32-bit floats
constexpr double kDegrees = 1e-3;

/// `types`, flown, angle mode, all splay angles and the cradle at 0°.
LineArray hanging(std::vector<std::int16_t> types, std::int16_t system = kStandardSystem)
{
    LineArray array;
    array.GBSetArrayType(system);
    array.GBSetMounting(true);
    const auto count = [&](std::int16_t code) {
        return static_cast<std::int16_t>(std::count(types.begin(), types.end(), code));
    };
    array.GBSetNumGerade(count(array.system().TypeCodeGerade));
    array.GBSetNumSchräg(count(array.system().TypeCodeSchräg));
    array.GBSetNumBass(count(array.system().TypeCodeBass));
    array.GBSetNumSpeakers(
        static_cast<std::int16_t>(static_cast<int>(types.size()) - array.GIGetNumBass()));
    array.GBSetCradleCoord({1.0F, 7.5F});
    types.resize(32);
    array.GBSetAllType(types);
    array.GFACalcCOM();
    return array;
}

TEST(Geometry, OneStraightBox)
{
    LineArray array = hanging({0});
    const FloatPair center = array.GFACalcCOM();
    EXPECT_NEAR(center[0], -0.25, kMetres);
    EXPECT_NEAR(center[1], 0.13, kMetres);
    const std::array<double, 4> pinAngles = {-40.385, -25.409, -5.679, 15.438};
    for (std::int16_t pin = 0; pin < 4; ++pin)
        EXPECT_NEAR(array.GFAngleFromPin(pin), pinAngles[static_cast<std::size_t>(pin)], kDegrees);
    EXPECT_EQ(array.GIPinPoint(), 2);
    EXPECT_NEAR(array.GFPinPointRemainder(), 5.679, kDegrees);
    const auto sources = array.GFAGetOriginPTSandAng(true);
    EXPECT_NEAR(sources[0], 0.97882, kMetres);
    EXPECT_NEAR(sources[32], 7.287, kMetres);
    EXPECT_EQ(sources[64], 0);
    EXPECT_EQ(array.GFAGetOriginPTSandAng(false)[32], -sources[32]);
}

TEST(Geometry, UpperFrontCornersHangBelowEachOtherAndStandOnEachOther)
{
    for (const bool flown : {true, false}) {
        LineArray array = hanging({0, 0, 1});
        array.GBSetMounting(flown);
        const std::vector<Point> corners = array.upperFrontCorners();
        ASSERT_EQ(corners.size(), 3U);
        const double step = flown ? -0.26 : 0.26; // straight boxes, not tilted
        EXPECT_NEAR(corners[1].y - corners[0].y, step, kMetres);
        const auto bounds = array.GFAGetBounds();
        if (flown) {
            EXPECT_NEAR(corners[0].y, 7.5 + array.system().cradle.PinY[0], 1e-3)
                << "the cradle is above them";
        } else {
            EXPECT_NEAR(corners[0].y, 7.5 + 0.26, kMetres);
            EXPECT_NEAR(corners[2].y, 7.5 - bounds[1], 1e-3) << "the highest of all";
        }
    }
}

TEST(Geometry, EveryKindOfBoxAndEveryFrame)
{
    struct Case {
        const char* what;
        std::int16_t system;
        std::vector<std::int16_t> types;
        std::int16_t splay; ///< index, at each joint
        bool flown;
        std::int16_t cradle; ///< tenths of a degree
        // By hand from the dimensions, to five decimals:
        std::array<double, 2> gravity;
        std::array<double, 3> lastSource; ///< room frame: x, y, degrees
        std::array<double, 4> bounds;    ///< steep, so that the lowest rear corner is the outermost
        std::array<double, 2> pinAngles; ///< of the first and the last pin
    };
    // clang-format off
    const Case cases[] = {
        {"straight", 0, {0, 0, 0}, 0, true, -600, {-0.25, 0.39}, {1.54421, 6.97659, 60},
         {0.78179, 0.88935, -0.46137, -0.10692}, {-20.9591, 52.6072}},
        {"trapezoidal", 0, {1, 1, 1}, 4, true, -600, {-0.28812, 0.34179}, {1.43366, 6.94247, 43.5},
         {0.69724, 0.86326, -0.46137, -0.10692}, {-27.3047, 53.8139}},
        {"bass", 0, {0, 2, 2}, 0, true, -600, {-0.21127, 0.57973}, {1.8303, 6.81142, 60},
         {1.17212, 1.09081, -0.46137, -0.10692}, {-12.1305, 44.7755}},
        {"compact", 1, {0, 0, 0}, 3, true, -600, {-0.13686, 0.40265}, {1.52972, 7.05399, 51},
         {0.69709, 0.62274, -0.31704, -0.0644}, {-12.7901, 44.7633}},
        {"compact bass", 1, {0, 1, 1}, 0, true, -600, {-0.20215, 0.69881}, {1.86103, 6.79735, 60},
         {1.20299, 1.17663, -0.31704, -0.0644}, {-12.6439, 26.3392}},
        {"frame, downwards", 0, {0}, 0, true, 200, {-0.25, 0.13}, {0.98242, 7.27973, -20},
         {0.33753, 0.42794, -0.62953, -0.24045}, {-40.3848, 71.0064}},
        {"frame, upwards", 0, {0}, 0, true, -600, {-0.25, 0.13}, {1.09387, 7.23659, 60},
         {0.33146, 0.79911, -0.46137, -0.10692}, {-40.3848, 71.0064}},
        {"compact frame, downwards", 1, {0}, 0, true, 200, {-0.119, 0.147}, {1.01763, 7.31161, -20},
         {0.21281, 0.34091, -0.39348, -0.175}, {-24.7964, 68.8059}},
        {"compact frame, upwards", 1, {0}, 0, true, -600, {-0.119, 0.147}, {1.10859, 7.34608, 60},
         {0.27115, 0.50563, -0.31704, -0.0644}, {-24.7964, 68.8059}},
        {"stack", 0, {2, 0, 1}, 1, false, 25, {-0.23042, -0.5347}, {0.78458, 8.37275, 0.5},
         {0.03856, -1.00484, -0.96049, 0.10478}, {19.6853, -54.7183}},
        {"compact stack", 1, {1, 0, 0}, 2, false, -30, {-0.18299, -0.50218}, {0.80351, 8.42838, 9},
         {0.01617, -1.06453, -0.63732, 0.09284}, {16.6487, -38.2532}}};
    // clang-format on
    constexpr double kByHand = 2e-5; // five decimals and sums of 32-bit floats
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        LineArray array = hanging(test.types, test.system);
        LineArray::Positions angles{};
        angles.fill(test.splay);
        angles[0] = test.cradle;
        array.GBSetAllAngle(angles);
        array.GBSetMounting(test.flown);
        const FloatPair gravity = array.GFACalcCOM();
        EXPECT_NEAR(gravity[0], test.gravity[0], kByHand);
        EXPECT_NEAR(gravity[1], test.gravity[1], kByHand);
        const auto sources = array.GFAGetOriginPTSandAng(true);
        const std::size_t last = test.types.size() - 1;
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(sources[32 * i + last], test.lastSource[i], kByHand) << i;
        const auto bounds = array.GFAGetBounds();
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(bounds[i], test.bounds[i], kByHand) << i;
        const auto lastPin = static_cast<std::int16_t>(test.system == kStandardSystem ? 10 : 13);
        EXPECT_NEAR(array.GFAngleFromPin(0), test.pinAngles[0], kDegrees);
        EXPECT_NEAR(array.GFAngleFromPin(lastPin), test.pinAngles[1], kDegrees);
        EXPECT_EQ(array.system().cradle.pinCount(), lastPin + 1);
    }
}

TEST(Geometry, ATrapezoidalTopBoxTiltsAllBoxesFurther)
{
    const auto straight = hanging({0, 0}).GFAGetOriginPTSandAng(true);
    const auto trapezoidal = hanging({1, 0}).GFAGetOriginPTSandAng(true);
    for (const std::size_t box : {64U, 65U})
        EXPECT_NEAR(trapezoidal[box], straight[box] - 4.5F, kDegrees);
}

TEST(Geometry, SplayAnglesAddUpAndHangInAChain)
{
    LineArray array = hanging({0, 0});
    LineArray::Positions angles{};
    angles[1] = 6; // 9°
    array.GBSetAllAngle(angles);
    const auto boxes = array.hungBoxes(0);
    EXPECT_NEAR(boxes[1].corner[1], 0.26, kMetres);
    EXPECT_NEAR(boxes[1].tiltDeg, 9, kDegrees);
    // A box tilted downwards by 9° has its lower front corner further back, by 0.26 sin 9°.
    EXPECT_NEAR(boxes[1].point({0, 0.26F})[0], -0.26 * 0.156434, kMetres);
}

TEST(Geometry, AStackGrowsUpwardsAndAimsTheOtherWay)
{
    LineArray array = hanging({0, 0});
    LineArray::Positions angles{};
    angles[0] = 25;
    array.GBSetAllAngle(angles);
    array.GBSetMounting(false);
    EXPECT_FLOAT_EQ(array.GFFirstAngle(), -2.5F);
    const auto sources = array.GFAGetOriginPTSandAng(true);
    EXPECT_GT(sources[32], 7.5);
    EXPECT_GT(sources[33], sources[32]);
    EXPECT_FLOAT_EQ(sources[64], -2.5F);
    EXPECT_LT(array.GFACalcCOM()[1], 0);
}

TEST(Geometry, AnUnknownCodeHasNoHeightButItsSplayTurnsWhatFollows)
{
    LineArray array = hanging({0, 9, 0});
    LineArray::Positions angles{};
    angles[1] = 2; // 3°
    angles[2] = 1; // 1.5°
    array.GBSetAllAngle(angles);
    const auto boxes = array.hungBoxes(0);
    EXPECT_EQ(boxes[1].shape, nullptr);
    EXPECT_EQ(boxes[2].corner, boxes[1].corner);
    EXPECT_NEAR(boxes[2].tiltDeg, 4.5, kDegrees);
    EXPECT_EQ(array.GFAGetOriginPTSandAng(true)[1], 0);
    EXPECT_FLOAT_EQ(array.GFGetSpeakerWeight(), 60.4F);
}

TEST(Geometry, CentreOfGravityDividesByTheCounts)
{
    LineArray array = hanging({0, 0});
    const FloatPair two = array.GFACalcCOM();
    array.GBSetNumGerade(4);
    const FloatPair counted = array.GFACalcCOM();
    EXPECT_FLOAT_EQ(counted[0], two[0] / 2);
    array.GBSetNumGerade(0);
    EXPECT_EQ(array.GFACalcCOM(), (FloatPair{0, 0}));
}

TEST(Geometry, InPinModeTheCentreOfGravityHangsBelowThePin)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        LineArray array = newProject(system).array;
        const FloatPair center = array.GFACalcCOM();
        const FloatPair hung = RotatePoint(center, -array.GFFirstAngle());
        EXPECT_NEAR(array.GFAArrayZero({0, 0})[0] + hung[0], 0, kMetres) << system;
        EXPECT_EQ(array.GFPinPointRemainder(), 0);
    }
}

TEST(Geometry, BoundsHoldThePinAndTheLowestCorner)
{
    LineArray array = hanging({0});
    const auto bounds = array.GFAGetBounds();
    // pin 2 lies 0.22882 m behind and 0.083 m above the top front corner
    EXPECT_NEAR(bounds[0], 0.22882 + 0.04309, kMetres);
    EXPECT_NEAR(bounds[1], 0.26 + 0.083, kMetres);
    EXPECT_NEAR(bounds[2], 0.22882 - 0.95691, kMetres);
    EXPECT_NEAR(bounds[3], -0.103 + 0.083, kMetres);
}

} // namespace
} // namespace orva
