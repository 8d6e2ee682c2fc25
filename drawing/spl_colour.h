#pragma once

#include <cstdint>

namespace orva {

/// The levels that the hues of a map span, in dB; both ends are red.
struct HueRange {
    float startDb;
    float spanDb;

    /// 50 to 120 dB for absolute maps (largest level 50 dB or more), else -75 to 5 dB.
    static HueRange of(float largestDb);
};

/// Colour as 0x00BBGGRR of hue, saturation and value, each 0..255.
std::uint32_t SplColour(int hue, int saturation, int value);

} // namespace orva
