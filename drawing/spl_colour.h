#pragma once

#include <cmath>
#include <cstdint>

namespace orva {

/// The levels that the hues of a map span, in dB; both ends are red.
struct HueRange {
    float startDb;
    float spanDb;

    /// 50 to 120 dB for absolute maps (largest level 50 dB or more), else -75 to 5 dB.
    static HueRange of(float largestDb);

    /// Hue 0..255 of a level (inline: a map asks for millions): 255 falling to 0 (magenta, blue,
    /// cyan, green, yellow, red) as the level rises through the range, repeating outside it. 0 for
    /// a level that is not finite.
    int hue(float levelDb) const
    {
        const double hues = (static_cast<double>(levelDb) - startDb) * (-256.0 / spanDb);
        if (!(std::abs(hues) <= 1e9))
            return 0; // no level that can be told from another
        return static_cast<int>(hues) & 0xFF;
    }
};

/// Colour as 0x00BBGGRR of hue, saturation and value, each 0..255.
std::uint32_t SplColour(int hue, int saturation, int value);

} // namespace orva
