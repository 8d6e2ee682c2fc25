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

/// Aiming lines with what stands at their ends, the bass box, and in the lower left corner, `taken`
/// pixels above the edge, what the colours say: the first 120 m of a line that meets an area, and
/// all else.
void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, double speedOfSound, const DrawingOptions& options,
                     LabelPlaces& labels, double taken = 0);

} // namespace orva
