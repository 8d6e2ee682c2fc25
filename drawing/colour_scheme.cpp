#include "drawing/colour_scheme.h"

namespace orva {

const ColourScheme& classicScheme()
{
    static constexpr ColourScheme kScheme = {{
        0xFFFFFF, 0x000000, 0x808080, 0xC0C0C0,           // canvas, ink, leader, grid
        0x000000, 0x000000, 0x996600, 0x000000, 0x0000FF, // wall, area, marker, array, source
        0xFF0000, 0x000000, 0x0000FF, 0xFF0000, 0x0000FF, // aim, miss, FOH, axes
        0x000000, 0x000000, 0x0000FF,                     // profile, curve, fit line
        0x0000FF, 0x00C000, 0xFF0000, 0x000000, 0x808080, // results
        0x000000, 0xFF0000,                               // sub array
        0xFF00FF, 0x0000FF, 0xFF0000,                     // triangle
        0x0000FF                                          // warning
    }};
    return kScheme;
}

const ColourScheme& lightScheme()
{
    static constexpr ColourScheme kScheme = {{
        0xFFFFFF, 0x2B2320, 0x7C736B, 0xDDD8D2,           // canvas, ink, leader, grid
        0x4A403A, 0x2B2320, 0x996600, 0x2B2320, 0x1C1CC6, // wall, area, marker, array, source
        0xB85A00, 0x7C736B, 0x1C1CC6, 0xB85A00, 0x1C1CC6, // aim, miss, FOH, axes
        0x4A403A, 0x996600, 0x1C1CC6,                     // profile, curve, fit line
        0x1C1CC6, 0x287A1E, 0xB85A00, 0x2B2320, 0x7C736B, // results
        0x2B2320, 0xB85A00,                               // sub array
        0xA0329B, 0x1C1CC6, 0xB85A00,                     // triangle
        0x1C1CC6                                          // warning
    }};
    return kScheme;
}

const ColourScheme& darkScheme()
{
    static constexpr ColourScheme kScheme = {{
        0x26221E, 0xEEEAE6, 0x9C948C, 0x48423C,           // canvas, ink, leader, grid
        0xC8C0B8, 0xEEEAE6, 0xE0B464, 0xD8D2CC, 0x7A7AFF, // wall, area, marker, array, source
        0xFFB068, 0x9C948C, 0x7A7AFF, 0xFFB068, 0x7A7AFF, // aim, miss, FOH, axes
        0xD8D2CC, 0xE0B464, 0x7A7AFF,                     // profile, curve, fit line
        0x7A7AFF, 0x7CD26E, 0xFFB068, 0xEEEAE6, 0x9C948C, // results
        0xD8D2CC, 0xFFB068,                               // sub array
        0xF08CE6, 0x7A7AFF, 0xFFB068,                     // triangle
        0x7A7AFF                                          // warning
    }};
    return kScheme;
}

} // namespace orva
