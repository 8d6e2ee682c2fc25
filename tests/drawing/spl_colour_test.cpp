#include "drawing/level_colours.h"
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
    const std::tuple<float, float, int> cases[] = {
        // largest level, level, hue
        {50, 50, 0},
        {50, 120, 0},
        {50, 50.5F, 255},
        {50, 85, 128},
        {50, 119.9F, 1},
        {49.9F, -75, 0},
        {49.9F, 5, 0},
        {49.9F, -35, 128},
        {49.9F, -115, 128}, // repeats outside
        {49.9F, -std::numeric_limits<float>::infinity(), 0}};
    for (const auto& [largest, level, hue] : cases)
        EXPECT_EQ(LevelColours({}, largest, 100).at(level), SplColour(hue, 255, 255)) << level;
}

TEST(LevelColours, EndWithTheirLastColourOutsideTheRange)
{
    const MapStyle even = {MapColours::Even, MapRange::Given, false};
    const MapStyle audience = {MapColours::Classic, MapRange::Audience, false};
    const std::tuple<MapStyle, std::optional<double>, double, double> cases[] = {
        {even, 95, 50, 120}, {audience, 95, 80, 101}, {audience, {}, 50, 120}};
    for (const auto& [style, mean, start, end] : cases) {
        const LevelColours colours(style, 105, mean);
        EXPECT_EQ(colours.startDb(), start);
        EXPECT_EQ(colours.endDb(), end);
        if (style.range == MapRange::Audience && !mean)
            continue; // the given ones repeat
        const auto at = [&](double level) { return colours.at(static_cast<float>(level)); };
        EXPECT_EQ(at(start - 30), at(start));
        EXPECT_EQ(at(end + 30), at(end));
        EXPECT_NE(at(start), at(end)) << "both ends are told apart";
        EXPECT_NE(at(end - 3), at(end - 0.1));
    }
}

} // namespace
} // namespace orva
