#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orva {

/// 0x00BBGGRR.
using Colour = std::uint32_t;

/// What a colour of a drawing stands for.
enum class Role {
    Canvas,
    Ink,    ///< texts and whatever has no role of its own
    Leader, ///< from a label to its place
    Grid,
    Wall,
    Area,
    Marker, ///< round the area under the pointer
    Array,
    Source, ///< of a box; the carrying pin
    Aim,    ///< axis of a box up to the area that it meets
    Miss,   ///< axis of a box that meets no area
    Foh,
    AxisX,
    AxisY,
    Profile, ///< levels along an area
    Curve,
    FitLine,
    Result1, ///< curves of a search's results, the best first
    Result2,
    Result3,
    Result4,
    ResultMore,
    SubBox,
    SubVirtual, ///< where the box seems to stand
    Side1,      ///< of a triangle
    Side2,
    Side3,
    Warning
};
constexpr std::size_t kRoles = 28;

/// The colour of each role, in the order above.
struct ColourScheme {
    std::array<Colour, kRoles> colours;

    Colour operator[](Role role) const { return colours[static_cast<std::size_t>(role)]; }
};

/// The program's own: on white. Pictures for paper and files have it, too.
const ColourScheme& classicScheme();
const ColourScheme& lightScheme();
const ColourScheme& darkScheme();

} // namespace orva
