#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"

#include <vector>

namespace orva {

/// Where a point of the room frame, whose y grows upwards, is drawn.
constexpr Point drawn(Point room)
{
    return {room.x, -room.y};
}

/// Pixels as user units, (0, 0) at the upper left.
void ResetScale(DrawingSurface& surface);

/// The same scale in x and y, so that a rectangle of `width` x `height` just fits; (0, 0) stays at
/// the upper left.
void FitScale(DrawingSurface& surface, double width, double height);

/// FitScale() for a picture so many pixels large.
Scale fittedScale(double pixelWidth, double pixelHeight, double width, double height);

/// Distances along an area of `length` (in the unit of the user) at which figures fit below it,
/// over so many pixels: every grid unit, or every second, fourth...
std::vector<double> labelledDistances(const DrawingSurface& surface, double length, double pixels,
                                      const DrawingOptions& options);

/// Whether lines every `unit` metres (feet with units of feet) lie two pixels apart or more.
bool gridFits(const DrawingSurface& surface, double unit, const TextOptions& options);

/// Grey lines every `unit` metres (feet with units of feet) through `origin` over the whole
/// surface; none where the grid does not fit.
void DrawGrid(DrawingSurface& surface, Point origin, double unit, const TextOptions& options);

} // namespace orva
