#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "drawing/label_places.h"
#include "engine/aiming_lines.h"

namespace orva {

/// The separate bass box beside the array.
struct BassBoxView {
    bool used = false;
    FloatPair place{};      ///< room frame
    bool showDelay = false; ///< its delay instead of distance and time of each aiming line
};

/// Aiming lines with what stands at their ends, and the bass box. The first 120 m of a line that
/// meets an area are blue, all else is black.
void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, double speedOfSound, const DrawingOptions& options,
                     LabelPlaces& labels);

} // namespace orva
