#include "model/vector_math.h"

#include <numbers>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(VectorMath, DirectionsOfAllQuadrantsAndAxes)
{
    const std::tuple<double, double, double, double> cases[] = {
        {0, 0, 0, 0},   {0, 2, 90, 90},    {0, -2, -90, 270}, {1, 0, 0, 0},       {-1, 0, 180, 180},
        {1, 1, 45, 45}, {1, -1, -45, 315}, {-1, 1, 135, 135}, {-1, -1, -135, 225}};
    for (const auto& [x, y, half, full] : cases) {
        EXPECT_NEAR(VectorAngle180(x, y), half, 1e-5)
            << x << ' ' << y; // the factor is a 32-bit float
        EXPECT_NEAR(VectorAngle360(x, y), full, 1e-5) << x << ' ' << y;
    }
}

TEST(VectorMath, ArcCosReachesItsEnds)
{
    EXPECT_DOUBLE_EQ(ArcCos(1), 0);
    EXPECT_DOUBLE_EQ(ArcCos(-1), std::numbers::pi);
    EXPECT_NEAR(ArcCos(0.5F), std::numbers::pi / 3, 1e-12);
}

TEST(VectorMath, RotatePointTurnsCounterClockwiseWhereYPointsDown)
{
    const FloatPair up = RotatePoint({1, 0}, 90);
    EXPECT_NEAR(up[0], 0, 1e-7);
    EXPECT_NEAR(up[1], -1, 1e-7);
}

} // namespace
} // namespace orva
