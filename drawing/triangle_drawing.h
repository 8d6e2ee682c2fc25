#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"

namespace orva {

/// The triangle of three sides with its angle, or why they make none; nothing where side 2 or 3 has
/// no length.
void DrawTriangle(DrawingSurface& surface, double side1, double side2, double side3,
                  const DrawingOptions& options);

} // namespace orva
