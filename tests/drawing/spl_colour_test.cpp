#include "drawing/spl_colour.h"

#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(SplColour, SectorsOfTheColourWheel)
{
    const std::tuple<int, int, int, std::uint32_t> cases[] = {
        {0, 255, 255, 0x0000FF},   // red
        {43, 255, 255, 0x00FFFC},  // just past yellow
        {85, 255, 255, 0x00FF01},  // nearly green
        {128, 255, 255, 0xFFFE00}, // cyan
        {170, 255, 255, 0xFF0300}, // nearly blue
        {255, 255, 255, 0x0500FF}, {10, 0, 200, 0xC7C7C8}};
    for (const auto& [hue, saturation, value, colour] : cases)
        EXPECT_EQ(SplColour(hue, saturation, value), colour) << hue;
}

TEST(SplColour, BothEndsOfARangeAreRedAndHuesFallInBetween)
{
    const HueRange absolute = HueRange::of(50);
    EXPECT_EQ(absolute.hue(50), 0);
    EXPECT_EQ(absolute.hue(120), 0);
    EXPECT_EQ(absolute.hue(50.5F), 255);
    EXPECT_EQ(absolute.hue(85), 128);
    EXPECT_EQ(absolute.hue(119.9F), 1);
    const HueRange relative = HueRange::of(49.9F);
    EXPECT_EQ(relative.hue(-75), 0);
    EXPECT_EQ(relative.hue(5), 0);
    EXPECT_EQ(relative.hue(-35), 128);
    EXPECT_EQ(relative.hue(-115), 128); // repeats outside
    EXPECT_EQ(relative.hue(-std::numeric_limits<float>::infinity()), 0);
    EXPECT_LT(relative.hue(std::numeric_limits<float>::max()), 256);
    EXPECT_GE(relative.hue(-std::numeric_limits<float>::max()), 0);
}

} // namespace
} // namespace orva
