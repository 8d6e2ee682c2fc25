#include "drawing/spl_colour.h"

#include <array>

namespace orva {

HueRange HueRange::of(float largestDb)
{
    return largestDb >= 50 ? HueRange{50, 70} : HueRange{-75, 80};
}

std::uint32_t SplColour(int hue, int saturation, int value)
{
    const int sector = 6 * hue / 256;
    const int f = 6 * hue - 256 * sector;
    const auto scaled = [&](double part) { return static_cast<int>((255 - part) * value / 256); };
    const int p = scaled(saturation);
    const int q = scaled(f * saturation / 256.0);
    const int t = scaled((255 - f) * saturation / 256.0);
    const std::array<std::array<int, 3>, 6> sectors = {
        {{value, t, p}, {q, value, p}, {p, value, t}, {p, q, value}, {t, p, value}, {value, p, q}}};
    const auto& [red, green, blue] = sectors[static_cast<std::size_t>(sector)];
    return static_cast<std::uint32_t>(red + 256 * green + 65536 * blue);
}

} // namespace orva
