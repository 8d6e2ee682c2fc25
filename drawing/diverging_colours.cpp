#include "drawing/diverging_colours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orva {

namespace {

/// Lightness, green to red, blue to yellow.
using Lab = std::array<double, 3>;

constexpr Lab kWhiteLab = {1, 0, 0};
constexpr Lab kBlueLab = {0.47, -0.032, -0.152};
constexpr Lab kOrangeLab = {0.66, 0.086, 0.132};
constexpr int kSteps = 128;

std::uint32_t channel(double linear)
{
    const double x = std::clamp(linear, 0.0, 1.0);
    const double shown = x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055;
    return static_cast<std::uint32_t>(std::lround(shown * 255));
}

/// OKLab to sRGB.
Colour colourOf(const Lab& lab)
{
    const auto cube = [](double x) { return x * x * x; };
    const double l = cube(lab[0] + 0.3963377774 * lab[1] + 0.2158037573 * lab[2]);
    const double m = cube(lab[0] - 0.1055613458 * lab[1] - 0.0638541728 * lab[2]);
    const double s = cube(lab[0] - 0.0894841775 * lab[1] - 1.2914855480 * lab[2]);
    const std::uint32_t red = channel(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s);
    const std::uint32_t green = channel(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s);
    const std::uint32_t blue = channel(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s);
    return blue << 16U | green << 8U | red;
}

std::size_t indexOf(int step)
{
    const int index = step + kSteps;
    return static_cast<std::size_t>(index);
}

std::array<Colour, 2 * kSteps + 1> madeColours()
{
    std::array<Colour, 2 * kSteps + 1> colours{};
    for (int step = -kSteps; step <= kSteps; ++step) {
        const Lab& end = step < 0 ? kBlueLab : kOrangeLab;
        const double share = std::abs(step) / static_cast<double>(kSteps);
        Lab lab{};
        for (std::size_t i = 0; i < lab.size(); ++i)
            lab[i] = kWhiteLab[i] + share * (end[i] - kWhiteLab[i]);
        colours[indexOf(step)] = colourOf(lab);
    }
    return colours;
}

} // namespace

Colour divergingColour(double share)
{
    static const std::array<Colour, 2 * kSteps + 1> colours = madeColours();
    const double step = std::clamp(share, -1.0, 1.0) * kSteps;
    return colours[indexOf(static_cast<int>(std::lround(step)))];
}

} // namespace orva
