#include "drawing/colour_scheme.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orva {
namespace {

/// WCAG 2: relative luminance of 0x00BBGGRR.
double luminance(Colour colour)
{
    const auto linear = [](Colour part) {
        const double value = (part & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour) + 0.7152 * linear(colour >> 8) + 0.0722 * linear(colour >> 16);
}

double contrast(Colour a, Colour b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

TEST(ColourScheme, TextsAndLinesStandOutFromTheCanvas)
{
    EXPECT_NEAR(contrast(0x000000, 0xFFFFFF), 21, 1e-9);
    const Role texts[] = {Role::Ink,  Role::AxisX,   Role::AxisY, Role::Aim,
                          Role::Miss, Role::FitLine, Role::Foh,   Role::Warning};
    for (const ColourScheme* scheme : {&lightScheme(), &darkScheme()}) {
        const Colour canvas = (*scheme)[Role::Canvas];
        for (const Role role : texts)
            EXPECT_GE(contrast((*scheme)[role], canvas), 4.5) << static_cast<int>(role);
        for (int i = static_cast<int>(Role::Ink); i <= static_cast<int>(Role::Warning); ++i)
            if (const Role role = static_cast<Role>(i); role != Role::Grid) {
                EXPECT_GE(contrast((*scheme)[role], canvas), 3) << i;
            }
        EXPECT_LT(contrast((*scheme)[Role::Grid], canvas), 3) << "it stays behind";
        // numbers stand on the boxes of a sub array
        EXPECT_GE(contrast((*scheme)[Role::SubVirtual], canvas), 4.5);
        EXPECT_GE(contrast((*scheme)[Role::SubBox], canvas), 4.5);
    }
    EXPECT_EQ(classicScheme()[Role::Canvas], 0xFFFFFFU);
    EXPECT_EQ(static_cast<std::size_t>(Role::Warning) + 1, kRoles);
}

} // namespace
} // namespace orva
