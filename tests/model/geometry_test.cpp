#include "model/line_array.h"
#include "model/project.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr double kMetres = 1e-5; // sums of 32-bit floats
constexpr double kDegrees = 1e-3;

/// `types` on a standard array, flown, angle mode, all splay angles and the cradle at 0°.
LineArray hanging(std::vector<std::int16_t> types)
{
    LineArray array;
    array.GBSetMounting(true);
    array.GBSetNumSpeakers(static_cast<std::int16_t>(types.size()));
    array.GBSetNumGerade(static_cast<std::int16_t>(types.size()));
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
