#pragma once

#include <array>
#include <cstdint>

namespace orva {

/// A scale of colours as 0x00BBGGRR, from dark (quiet) to light (loud): dark blue, violet, red,
/// orange, yellow, pale yellow, never white. Lightness rises from each to the next, and equal steps
/// differ equally in the eyes of whoever sees least of them, colour-blind or not. Made by
/// make_even_colours.py.
const std::array<std::uint32_t, 256>& evenColours();

} // namespace orva
