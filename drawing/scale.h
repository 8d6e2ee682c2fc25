#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"

namespace orva {

/// Pixels as user units, (0, 0) at the upper left.
void ResetScale(DrawingSurface& surface);

/// The same scale in x and y, so that a rectangle of `width` x `height` just fits; (0, 0) stays at
/// the upper left.
void FitScale(DrawingSurface& surface, double width, double height);

/// Grey lines every `unit` metres (feet with units of feet) through `origin` over the whole
/// surface; none where they would lie closer than two pixels.
void DrawGrid(DrawingSurface& surface, Point origin, double unit, const TextOptions& options);

} // namespace orva
