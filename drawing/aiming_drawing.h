#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "engine/aiming_lines.h"

namespace orva {

/// The separate bass box beside the array.
struct BassBoxView {
    bool used = false;
    FloatPair place{};      ///< room frame
    bool showDelay = false; ///< its delay instead of distance and time of each aiming line
};

/// Aiming lines with what stands at their ends, and the bass box. The first 120 m of a line that
/// meets an area are blue, all else is black. Leaves room for the level that is printed at the FOH
/// (room frame).
void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, FloatPair foh, double speedOfSound,
                     const DrawingOptions& options);

} // namespace orva
