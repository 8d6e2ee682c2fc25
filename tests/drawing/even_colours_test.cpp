#include "drawing/even_colours.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include <gtest/gtest.h>

namespace orva {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

/// What a kind of sight makes of linear RGB: a matrix for either side of a plane through the greys.
/// Protan and deutan: Machado, Oliveira, Fernandes, "A Physiologically-based Model for Simulation
/// of Color Vision Deficiency", 2009, severity 1.0. Tritan: Brettel, Vienot, Mollon, "Computerized
/// simulation of color appearance for dichromats", 1997.
struct Sight {
    const char* name;
    Matrix redSide;
    Matrix blueSide = redSide;
};
constexpr Sight kSights[] = {
    {"normal", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protan",
     {{{0.152286, 1.052583, -0.204868},
       {0.114503, 0.786281, 0.099216},
       {-0.003882, -0.048116, 1.051998}}}},
    {"deutan",
     {{{0.367322, 0.860646, -0.227968},
       {0.280085, 0.672501, 0.047413},
       {-0.011820, 0.042940, 0.968881}}}},
    {"tritan",
     {{{1.01277, 0.13548, -0.14826}, {-0.01243, 0.86812, 0.14431}, {0.07589, 0.80500, 0.11911}}},
     {{{0.93678, 0.18979, -0.12657}, {0.06154, 0.81526, 0.12320}, {-0.37562, 1.12767, 0.24796}}}}};
constexpr Triple kTowardsRed = {0.03901, -0.02788, -0.01113};

Triple times(const Matrix& matrix, const Triple& vector)
{
    Triple product{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            product[i] += matrix[i][k] * vector[k];
    return product;
}

double determinant(const Matrix& m)
{
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

Triple linearRgb(std::uint32_t colour)
{
    const auto linear = [](std::uint32_t byte) {
        const double part = byte / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return {linear(colour & 0xFF), linear(colour >> 8 & 0xFF), linear(colour >> 16 & 0xFF)};
}

/// CIELAB for D65.
Triple labOf(const Triple& linear)
{
    const Triple xyz = times({{{0.4124564, 0.3575761, 0.1804375},
                               {0.2126729, 0.7151522, 0.0721750},
                               {0.0193339, 0.1191920, 0.9503041}}},
                             linear);
    const auto root = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const double x = root(xyz[0] / 0.95047);
    const double y = root(xyz[1]);
    const double z = root(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

Triple seenLab(const Sight& sight, std::uint32_t colour)
{
    const Triple rgb = linearRgb(colour);
    const bool redSide = std::inner_product(rgb.begin(), rgb.end(), kTowardsRed.begin(), 0.0) >= 0;
    Triple linear = times(redSide ? sight.redSide : sight.blueSide, rgb);
    for (double& part : linear)
        part = std::clamp(part, 0.0, 1.0);
    return labOf(linear);
}

double sinDeg(double degrees)
{
    return std::sin(degrees * std::numbers::pi / 180);
}

double cosDeg(double degrees)
{
    return std::cos(degrees * std::numbers::pi / 180);
}

/// The weight of chroma in two terms of CIEDE2000.
double chromaShare(double chroma)
{
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

struct Polar {
    double lightness;
    double chroma;
    double hueDeg; ///< 0..360
};

Polar polarOf(const Triple& lab, double stretch)
{
    const double hue = std::atan2(lab[2], stretch * lab[1]) * 180 / std::numbers::pi;
    return {lab[0], std::hypot(stretch * lab[1], lab[2]), hue < 0 ? hue + 360 : hue};
}

/// Both hues' mean on the shorter way round; a grey has none.
double meanHueDeg(const Polar& a, const Polar& b)
{
    const double sum = a.hueDeg + b.hueDeg;
    if (a.chroma * b.chroma == 0)
        return sum;
    if (std::abs(a.hueDeg - b.hueDeg) <= 180)
        return sum / 2;
    return sum < 360 ? sum / 2 + 180 : sum / 2 - 180;
}

/// CIEDE2000.
double difference(const Triple& one, const Triple& other)
{
    const double mean = (std::hypot(one[1], one[2]) + std::hypot(other[1], other[2])) / 2;
    const double stretch = 1 + (1 - chromaShare(mean)) / 2;
    const Polar a = polarOf(one, stretch);
    const Polar b = polarOf(other, stretch);
    const double hue = meanHueDeg(a, b);
    const double chroma = (a.chroma + b.chroma) / 2;
    const double fromGrey = std::pow((a.lightness + b.lightness) / 2 - 50, 2);
    const double t = 1 - 0.17 * cosDeg(hue - 30) + 0.24 * cosDeg(2 * hue) +
                     0.32 * cosDeg(3 * hue + 6) - 0.20 * cosDeg(4 * hue - 63);
    double turn = b.hueDeg - a.hueDeg;
    if (std::abs(turn) > 180)
        turn -= std::copysign(360, turn);
    const double byLightness =
        (b.lightness - a.lightness) / (1 + 0.015 * fromGrey / std::sqrt(20 + fromGrey));
    const double byChroma = (b.chroma - a.chroma) / (1 + 0.045 * chroma);
    const double byHue =
        2 * std::sqrt(a.chroma * b.chroma) * sinDeg(turn / 2) / (1 + 0.015 * chroma * t);
    const double twist =
        -2 * chromaShare(chroma) * sinDeg(60 * std::exp(-std::pow((hue - 275) / 25, 2)));
    return std::sqrt(byLightness * byLightness + byChroma * byChroma + byHue * byHue +
                     twist * byChroma * byHue);
}

/// The colour of a level that lies `db` above the start of a range.
std::uint32_t colourOf(double db, double spanDb)
{
    return evenColours()[static_cast<std::size_t>(std::lround(db * 255 / spanDb))];
}

// What measures the scale is right itself.

TEST(EvenColours, DifferencesArePublishedOnes)
{
    // G. Sharma, W. Wu, E. N. Dalal, "The CIEDE2000 Color-Difference Formula", 2005, table 1
    const struct {
        Triple one;
        Triple other;
        double difference;
    } cases[] = {{{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
                 {{50, 0, 0}, {50, -1, 2}, 2.3669},
                 {{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
                 {{50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195},
                 {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
                 {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
                 {{2.0776, 0.0795, -1.135}, {0.9033, -0.0636, -0.5514}, 0.9082}};
    for (const auto& test : cases) {
        EXPECT_NEAR(difference(test.one, test.other), test.difference, 5e-5);
        EXPECT_NEAR(difference(test.other, test.one), test.difference, 5e-5);
    }
}

TEST(EvenColours, SightsSeeGreysAlikeAndLackOneDimension)
{
    const Triple red = seenLab(kSights[0], 0x0000FF);
    EXPECT_NEAR(red[0], 53.24, 0.01);
    EXPECT_NEAR(red[1], 80.09, 0.01);
    EXPECT_NEAR(red[2], 67.20, 0.01);
    for (const Sight& sight : kSights)
        for (const std::uint32_t grey : {0x000000U, 0x101010U, 0x808080U, 0xFFFFFFU})
            EXPECT_LT(difference(seenLab(sight, grey), seenLab(kSights[0], grey)), 0.01)
                << sight.name;
    for (const Sight& sight : kSights)
        for (const Matrix& matrix : {sight.redSide, sight.blueSide})
            EXPECT_NEAR(determinant(matrix), &sight == kSights ? 1 : 0, 1e-5) << sight.name;
}

// The scale.

TEST(EvenColours, LeadFromDarkBlueToPaleYellow)
{
    const Triple first = seenLab(kSights[0], evenColours().front());
    const Triple last = seenLab(kSights[0], evenColours().back());
    EXPECT_LT(first[0], 6);
    EXPECT_LT(first[2], -5); // blue
    EXPECT_GT(last[0], 95);
    EXPECT_GT(last[2], 15); // yellow, and not the white of places without a level
}

TEST(EvenColours, LightnessRisesForEverybody)
{
    for (const Sight& sight : kSights) {
        SCOPED_TRACE(sight.name);
        for (std::size_t i = 1; i < evenColours().size(); ++i)
            EXPECT_GT(seenLab(sight, evenColours()[i])[0], seenLab(sight, evenColours()[i - 1])[0])
                << i;
    }
}

TEST(EvenColours, EverybodyTellsLevelsThreeDecibelsApart)
{
    constexpr double kApartDb = 3;
    const struct {
        double spanDb;
        double least;
    } cases[] = {{21, 6}, {70, 2.5}, {80, 2.5}};
    for (const auto& [spanDb, least] : cases)
        for (const Sight& sight : kSights) {
            double smallest = 1000;
            for (double db = 0; db + kApartDb <= spanDb; db += 1.0 / 128)
                smallest =
                    std::min(smallest, difference(seenLab(sight, colourOf(db, spanDb)),
                                                  seenLab(sight, colourOf(db + kApartDb, spanDb))));
            EXPECT_GE(smallest, least) << sight.name << " over " << spanDb << " dB";
        }
}

} // namespace
} // namespace orva
